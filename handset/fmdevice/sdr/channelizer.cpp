// The change of rate to the multiplex's.
#include "handset/fmdevice/sdr/channelizer.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "handset/fmdevice/sdr/fir_design.h"
#include "handset/fmdevice/sdr/kernels.h"
#include "handset/fmdevice/sdr/mpx_block.h"

namespace sdr {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kRejection_dB = 80.0;
// The most filters of an exact bank: 250 kHz needs 192 of them.
constexpr std::size_t kMostExact = 256;
// Between two of so many, a straight line is off by less than -100 dB.
constexpr std::size_t kInterpolated = 512;

// Half the width of the transition, between what the lower one of both rates can hold (the wider, the
// cheaper).
double HalfTransition_Hz(double lower_Hz) {
    const double share = std::clamp((lower_Hz - kLeastRate_Hz) / (kMpxRate_Hz - kLeastRate_Hz), 0.0, 1.0);
    return 8000.0 + 17000.0 * share;
}

}  // namespace

CChannelizer::CChannelizer(double rate_Hz) : rate_Hz_(rate_Hz) {
    const double lower_Hz = std::min(rate_Hz, kMpxRate_Hz);
    pass_Hz_ = lower_Hz / 2.0 - HalfTransition_Hz(lower_Hz);
    stop_Hz_ = lower_Hz / 2.0 + HalfTransition_Hz(lower_Hz);
    const LowPass filter{rate_Hz, pass_Hz_, stop_Hz_, kRejection_dB};
    const auto whole = static_cast<std::uint64_t>(std::llround(rate_Hz));
    const auto target = static_cast<std::uint64_t>(kMpxRate_Hz);
    const std::uint64_t common = std::gcd(whole, target);
    exact_ = static_cast<double>(whole) == rate_Hz && target / common <= kMostExact;
    up_ = exact_ ? static_cast<std::size_t>(target / common) : kInterpolated;
    down_ = exact_ ? static_cast<double>(whole / common) : rate_Hz / kMpxRate_Hz * static_cast<double>(up_);
    taps_ = (TapsNeeded(filter) + kTapsMultiple / 2) / (kTapsMultiple / 2) * (kTapsMultiple / 2);
    DesignBank();
    Reset();
}

double CChannelizer::Prototype(double at_samples) const {
    const double cutoff = (pass_Hz_ + stop_Hz_) / rate_Hz_;
    const double x = kPi * cutoff * at_samples;
    const double sinc = x == 0.0 ? 1.0 : std::sin(x) / x;
    return sinc * KaiserWindow(KaiserBeta(kRejection_dB), at_samples / (static_cast<double>(taps_) / 2.0));
}

void CChannelizer::DesignBank() {
    const std::size_t filters = exact_ ? up_ : up_ + 1;
    double power = 0.0;
    for (std::size_t p = 0; p < filters; ++p) {
        const double part = static_cast<double>(p) / static_cast<double>(up_);
        std::vector<double> taps(taps_);
        for (std::size_t i = 0; i < taps_; ++i) {
            taps[i] = Prototype(static_cast<double>(i) - static_cast<double>(taps_ / 2 - 1) - part);
        }
        const double sum = std::accumulate(taps.begin(), taps.end(), 0.0);
        for (double& tap : taps) {
            tap /= sum;
            power += p < up_ ? tap * tap : 0.0;
        }
        bank_.push_back(TapPairs(taps));
    }
    noiseBandwidth_Hz_ = rate_Hz_ * power / static_cast<double>(up_);
}

double CChannelizer::ResponseAt(double frequency_Hz) const {
    std::vector<double> taps;
    for (std::size_t i = 0; i < bank_[0].size(); i += 2) taps.push_back(bank_[0][i]);
    return sdr::ResponseAt(taps, rate_Hz_, frequency_Hz);
}

void CChannelizer::Reset() {
    pending_.assign(taps_ - 1, Sample());
    place_ = 0.0;
}

void CChannelizer::Process(const Sample* samples, std::size_t count, std::vector<Sample>* results) {
    pending_.insert(pending_.end(), samples, samples + count);
    if (exact_ && up_ == 1) {
        ByWholeStep(results);
    } else {
        ByPhases(results);
    }
}

void CChannelizer::ByWholeStep(std::vector<Sample>* results) {
    const auto step = static_cast<std::size_t>(down_);
    const auto first = static_cast<std::size_t>(place_);
    std::size_t ready = 0;
    if (pending_.size() >= first + taps_) {
        ready = (pending_.size() - first - taps_) / step + 1;
        const std::size_t before = results->size();
        results->resize(before + ready);
        ActiveKernels().filter(Pairs(pending_.data() + first), 2 * step, bank_[0].data(), bank_[0].size(),
                               Pairs(results->data() + before), ready);
    }
    const std::size_t used = std::min(first + ready * step, pending_.size());
    place_ = static_cast<double>(first + ready * step - used);
    pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(used));
}

void CChannelizer::ByPhases(std::vector<Sample>* results) {
    const Kernels& kernels = ActiveKernels();
    const auto parts = static_cast<double>(up_);
    auto sample = static_cast<std::size_t>(place_ / parts);
    while (sample + taps_ <= pending_.size()) {
        const double part = place_ - static_cast<double>(sample) * parts;
        const auto filter = std::min(static_cast<std::size_t>(part), up_ - 1);
        const float* from = Pairs(pending_.data() + sample);
        Sample result;
        kernels.filter(from, 0, bank_[filter].data(), bank_[filter].size(), Pairs(&result), 1);
        if (!exact_) {
            Sample next;
            kernels.filter(from, 0, bank_[filter + 1].data(), bank_[filter + 1].size(), Pairs(&next), 1);
            result += (next - result) * static_cast<float>(part - static_cast<double>(filter));
        }
        results->push_back(result);
        place_ += down_;
        sample = static_cast<std::size_t>(place_ / parts);
    }
    const std::size_t used = std::min(sample, pending_.size());
    place_ -= static_cast<double>(used) * parts;
    pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(used));
}

}  // namespace sdr
