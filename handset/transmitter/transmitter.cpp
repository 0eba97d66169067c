#include "handset/transmitter/transmitter.h"

#include <algorithm>
#include <cmath>

#include "handset/base/turning.h"
#include "handset/transmitter/modulator.h"
#include "handset/transmitter/programme.h"
#include "handset/transmitter/rate_change.h"

namespace transmitter {
namespace {

constexpr std::size_t kBlock = 1024;
// Half of what a station takes on the air.
constexpr double kReach_Hz = 260000;

}  // namespace

// One station from its programme to its place in the stream.
class CTransmitter::CStation {
  public:
    CStation(const StationSettings& settings, const StreamSettings& stream)
        : multiplex_(settings.multiplex),
          path_(settings.path),
          // A clock that is too fast takes its samples closer together.
          rate_Hz_(stream.rate_Hz * (1 + stream.ppm * 1e-6)),
          rateChange_(kMultiplexRate_Hz / rate_Hz_),
          offset_Hz_(settings.offset_Hz),
          carrier_(stream.carrier) {
        SetLevel(settings.level_dB);
    }

    void Move(double offset_Hz) { offset_Hz_ = offset_Hz; }
    void SetLevel(double level_dB) { size_ = carrier_ * std::pow(10.0, level_dB / 20); }
    long long GroupsTaken() const { return multiplex_.GroupsTaken(); }

    void Add(std::complex<float>* samples, std::size_t count) {
        if (std::abs(offset_Hz_) > rate_Hz_ / 2 + kReach_Hz) return;
        made_.resize(count);
        for (std::size_t done = 0; done < count;) {
            done += rateChange_.Read(&made_[done], count - done);
            if (done < count) Modulate();
        }
        const double step_turns = offset_Hz_ / rate_Hz_;
        handset::CTurning turn(offset_turns_, step_turns);
        for (std::size_t i = 0; i < count; ++i) {
            const std::complex<float> place(static_cast<float>(size_ * turn.Cosine()),
                                            static_cast<float>(size_ * turn.Sine()));
            samples[i] += made_[i] * place;
            turn.Next();
        }
        offset_turns_ += step_turns * static_cast<double>(count);
        offset_turns_ -= std::floor(offset_turns_);
    }

  private:
    void Modulate() {
        double deviation_Hz[kBlock];
        std::complex<float> carrier[kBlock];
        multiplex_.Read(deviation_Hz, kBlock);
        modulator_.Modulate(deviation_Hz, carrier, kBlock);
        path_.Pass(carrier, kBlock);
        rateChange_.Write(carrier, kBlock);
    }

    CMultiplex multiplex_;
    CModulator modulator_;
    CPath path_;
    double rate_Hz_;
    CRateChange rateChange_;
    double offset_Hz_;
    double offset_turns_ = 0;
    double carrier_;
    double size_ = 0;
    std::vector<std::complex<float>> made_;
};

CTransmitter::CTransmitter(const StreamSettings& stream, const std::vector<StationSettings>& stations)
    : stream_(stream), noise_(stream.seed) {
    for (const StationSettings& station : stations) {
        stations_.push_back(std::make_unique<CStation>(station, stream));
    }
}

CTransmitter::~CTransmitter() = default;

void CTransmitter::Move(std::size_t station, double offset_Hz) {
    stations_.at(station)->Move(offset_Hz);
}
void CTransmitter::SetLevel(std::size_t station, double level_dB) {
    stations_.at(station)->SetLevel(level_dB);
}
long long CTransmitter::GroupsTaken(std::size_t station) const {
    return stations_.at(station)->GroupsTaken();
}

void CTransmitter::Read(std::complex<float>* samples, std::size_t count) {
    std::fill(samples, samples + count, std::complex<float>());
    for (std::size_t begin = 0; begin < count; begin += kBlock) {
        const std::size_t part = std::min(kBlock, count - begin);
        for (const auto& station : stations_) station->Add(samples + begin, part);
        AddFaults(samples + begin, part);
    }
}

void CTransmitter::AddFaults(std::complex<float>* samples, std::size_t count) {
    if (std::isfinite(stream_.carrierToNoise_dBHz)) {
        // A complex stream is as wide as its rate; half of the noise is in each part.
        const double density =
            stream_.carrier * stream_.carrier * std::pow(10.0, -stream_.carrierToNoise_dBHz / 10);
        const auto size = static_cast<float>(std::sqrt(density * stream_.rate_Hz / 2));
        for (std::size_t i = 0; i < count; ++i) samples[i] += size * noise_.Gaussian();
    }
    const bool skewed = stream_.gainError_dB != 0 || stream_.phaseError_deg != 0;
    const auto gain = static_cast<float>(std::pow(10.0, stream_.gainError_dB / 20));
    const auto sine = static_cast<float>(std::sin(stream_.phaseError_deg * kPi / 180));
    const auto cosine = static_cast<float>(std::cos(stream_.phaseError_deg * kPi / 180));
    const std::complex<float> dc(stream_.dc);
    for (std::size_t i = 0; i < count; ++i) {
        if (skewed) {
            const float real = samples[i].real(), imaginary = samples[i].imag();
            samples[i] = {gain * real, cosine * imaginary + sine * real};
        }
        samples[i] += dc;
    }
}

}  // namespace transmitter
