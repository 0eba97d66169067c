#include "handset/ether/air.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "handset/ether/texts_on_air.h"
#include "handset/transmitter/noise.h"

namespace ether {
namespace {

// Noise is drawn once and read from another place of it for every block.
constexpr std::size_t kNoiseSamples = std::size_t{1} << 17;
constexpr float kHalfScale = 127.5F;
// What rounding to 8 bits adds to both parts together.
constexpr double kRoundingNoise = 2 / (12.0 * kHalfScale * kHalfScale);
// The tuner's own control leaves room for all carriers at once.
constexpr double kAutomaticPeak = 0.7;

double Power(double decibels) {
    return std::pow(10.0, decibels / 10);
}

double CarrierOf(double level, double gain_dB) {
    return kUsualCarrier * std::pow(10.0, (level - kUsualLevel + gain_dB - kUsualGain_dB) / 20);
}

void AppendBytes(const std::vector<std::complex<float>>& samples, std::vector<std::uint8_t>* bytes) {
    const std::size_t before = bytes->size();
    bytes->resize(before + 2 * samples.size());
    const auto* parts = reinterpret_cast<const float*>(samples.data());
    std::uint8_t* out = bytes->data() + before;
    for (std::size_t i = 0; i < 2 * samples.size(); ++i) {
        const float value = parts[i] * kHalfScale + (kHalfScale + 0.5F);
        out[i] = static_cast<std::uint8_t>(static_cast<int>(std::max(0.0F, std::min(255.0F, value))));
    }
}

}  // namespace

struct CAir::OnAir {
    std::uint32_t channel_10kHz = 0;
    fm::Station station;
    std::unique_ptr<CStationSignal> signal;  // none before it is first in view
    CSynthesis::Station samples;
    double unheard_s = 0;
};

CAir::CAir(OpenFile openFile, double utc_s, int halfHours)
    : openFile_(std::move(openFile)), utc_s_(utc_s), halfHours_(halfHours), noise_(kNoiseSamples) {
    transmitter::CNoise noise(1);
    for (std::complex<float>& sample : noise_) sample = noise.Gaussian();
    SetWindow(window_);
}

CAir::~CAir() = default;

void CAir::SetBand(const fm::Band& band) {
    std::map<std::uint32_t, std::unique_ptr<OnAir>> next;
    for (const auto& [channel, station] : band.stations) {
        auto& before = stations_[channel];
        if (!before || !SendTheSame(before->station, station)) {
            before = std::make_unique<OnAir>();
            before->channel_10kHz = channel;
        }
        before->station = station;
        next[channel] = std::move(before);
    }
    stations_ = std::move(next);
}

void CAir::SetLimit(int level, std::uint32_t channel_10kHz) {
    limit_ = level;
    limitedChannel_ = channel_10kHz;
}

void CAir::SetWindow(const Window& window) {
    if (!synthesis_ || window.rate_Hz != window_.rate_Hz) {
        synthesis_ = std::make_unique<CSynthesis>(window.rate_Hz);
        samples_.resize(synthesis_->BlockSamples());
    }
    window_ = window;
}

double CAir::LevelOf(std::uint32_t channel_10kHz, const fm::Station& station) const {
    const bool limited = limitedChannel_ == 0 || limitedChannel_ == channel_10kHz;
    return limited ? std::min(limit_, station.level) : station.level;
}

std::unique_ptr<CStationSignal> CAir::Begin(std::uint32_t channel_10kHz, const fm::Station& station) const {
    auto programme = station.programme.kind == fm::ProgrammeKind::kFile
                         ? openFile_(station.programme.text)
                         : fm::MakeGenerator(station.programme);
    return std::make_unique<CStationSignal>(std::move(programme), station.stereo,
                                            TextsOnAir(channel_10kHz, station, utc_s_, halfHours_));
}

double CAir::Gain_dB() const {
    if (window_.gain_dB) return *window_.gain_dB;
    double all = 0;
    for (const auto& [channel, onAir] : stations_) {
        if (std::abs(channel * 10000.0 - window_.centre_Hz) < window_.rate_Hz / 2.0)
            all += CarrierOf(LevelOf(channel, onAir->station), 0);
    }
    double gain_dB = 0;
    for (const int step_tenthdB : kGains_tenthdB) {
        if (all * std::sqrt(Power(step_tenthdB / 10.0)) <= kAutomaticPeak) gain_dB = step_tenthdB / 10.0;
    }
    return gain_dB;
}

void CAir::AddStation(OnAir* onAir, double size) {
    const double block_s = CSynthesis::kStationBlock / kStationRate_Hz;
    const double offset_Hz = onAir->channel_10kHz * 10000.0 - window_.centre_Hz;
    const long line = std::lround(offset_Hz / CSynthesis::kLine_Hz);
    if (!synthesis_->Reaches(line)) {
        onAir->unheard_s += block_s;
        return;
    }
    if (!onAir->signal) onAir->signal = Begin(onAir->channel_10kHz, onAir->station);
    onAir->signal->Pass(std::exchange(onAir->unheard_s, 0));
    CSynthesis::Shift(&onAir->samples);
    onAir->signal->Read(onAir->samples.Next(), CSynthesis::kStationBlock,
                        offset_Hz - static_cast<double>(line) * CSynthesis::kLine_Hz,
                        1 / (1 + window_.clockError_ppm * 1e-6));
    synthesis_->Add(onAir->samples, line, static_cast<float>(size));
}

void CAir::AddNoise(double gain_dB) {
    const double density = Power(20 * std::log10(CarrierOf(kUsualLevel, gain_dB)) - kUsualLevel - kLevelOf0);
    // Rounding brings its share of it, and a converter never stands still.
    const double power = std::max(density * window_.rate_Hz - kRoundingNoise, kRoundingNoise);
    const auto size = static_cast<float>(std::sqrt(power / 2));
    for (std::size_t done = 0; done < samples_.size();) {
        random_ = random_ * 6364136223846793005U + 1442695040888963407U;
        const std::size_t from = random_ >> 48;
        const std::size_t count = std::min(samples_.size() - done, kNoiseSamples - from);
        for (std::size_t i = 0; i < count; ++i) samples_[done + i] += size * noise_[from + i];
        done += count;
    }
}

std::size_t CAir::Read(std::vector<std::uint8_t>* bytes) {
    const double gain_dB = Gain_dB();
    synthesis_->Begin();
    for (auto& [channel, onAir] : stations_)
        AddStation(onAir.get(), CarrierOf(LevelOf(channel, onAir->station), gain_dB));
    synthesis_->End(samples_.data());
    utc_s_ += CSynthesis::kStationBlock / kStationRate_Hz;
    AddNoise(gain_dB);
    AppendBytes(samples_, bytes);
    return samples_.size();
}

void CAir::Pass(double seconds) {
    for (auto& [channel, onAir] : stations_) onAir->unheard_s += seconds;
    utc_s_ += seconds;
}

}  // namespace ether
