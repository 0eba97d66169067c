#include "handset/ether/station_signal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "handset/base/turning.h"
#include "handset/transmitter/multiplex.h"
#include "handset/transmitter/windowed_sinc.h"

namespace ether {
namespace {

constexpr float kProgramme_Hz = 66250;
constexpr float kPilotDeviation_Hz = 6750;
constexpr float kRdsDeviation_Hz = 2000;
constexpr double kGroup_s = transmitter::kGroupBits / 1187.5;
// Beyond this the texts begin anew wherever they are: nobody remembers.
constexpr double kLongestPass_s = 600;
constexpr std::size_t kLanes = 8;

// Taps between two samples of the studio, one row for each place.
constexpr std::size_t kTaps = 24;
struct Interpolation {
    std::array<float, kStationFactor * kTaps> rows;

    Interpolation() : rows() {
        const transmitter::CWindowedSinc sinc(18500, kStudioRate_Hz - 18500, 80);
        for (std::size_t phase = 0; phase < kStationFactor; ++phase) {
            for (std::size_t tap = 0; tap < kTaps; ++tap) {
                const double place = static_cast<double>(kTaps) / 2 - 1 +
                                     static_cast<double>(phase) / kStationFactor - static_cast<double>(tap);
                rows[phase * kTaps + tap] =
                    static_cast<float>(sinc.At(place / kStudioRate_Hz) / kStudioRate_Hz);
            }
        }
    }
};

const Interpolation& TheInterpolation() {
    static const Interpolation interpolation;
    return interpolation;
}

float Sum(const float* samples, const float* taps) {
    float lanes[kLanes] = {};
    for (std::size_t i = 0; i < kTaps; i += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane) lanes[lane] += samples[i + lane] * taps[i + lane];
    }
    return ((lanes[0] + lanes[4]) + (lanes[1] + lanes[5])) + ((lanes[2] + lanes[6]) + (lanes[3] + lanes[7]));
}

// The samples under the filter go to the front, and room is made behind them.
void Advance(std::vector<float>* line, std::size_t count) {
    std::copy(line->end() - static_cast<std::ptrdiff_t>(kTaps), line->end(), line->begin());
    line->resize(kTaps + count);
}

// The phase gains what the deviation adds up to over a step, of which the samples are only points: weights of
// the one in the middle, its neighbours and theirs.
constexpr float kWeights[] = {1 - 2.0F / 24 - 6 * 17.0F / 5760, 1.0F / 24 + 4 * 17.0F / 5760, -17.0F / 5760};
constexpr std::size_t kNeighbours = 2;

// The sine of a phase whose 2^32 are a turn, to -100 dB.
inline float Sine(std::uint32_t phase) {
    // In half turns, -1 to 1; the sine is the same from either side of a quarter.
    const float place = static_cast<float>(static_cast<std::int32_t>(phase)) * (1.0F / 2147483648.0F);
    const float size = std::abs(place);
    const float folded = std::min(size, 1.0F - size);
    const float x = std::copysign(folded, place) * 3.14159265F;
    const float square = x * x;
    return x * (1.0F + square * (-1.0F / 6 +
                                 square * (1.0F / 120 + square * (-1.0F / 5040 + square * (1.0F / 362880)))));
}

}  // namespace

CStationSignal::CStationSignal(std::unique_ptr<fm::IGenerator> programme, bool stereo,
                               const std::optional<transmitter::StationTexts>& texts)
    : studio_(std::move(programme)),
      stereo_(stereo),
      sum_(kTaps),
      difference_(kTaps),
      data_(kTaps),
      deviation_Hz_(2 * kNeighbours) {
    if (!texts) return;
    scheduler_ = std::make_shared<transmitter::CGroupScheduler>(*texts);
    rds_.emplace([scheduler = scheduler_] { return scheduler->Next(); });
}

void CStationSignal::Pass(double seconds) {
    if (!scheduler_) return;
    passed_s_ = std::min(passed_s_ + seconds, kLongestPass_s);
    for (; passed_s_ >= kGroup_s; passed_s_ -= kGroup_s) (void)scheduler_->Next();
}

void CStationSignal::ReadStudio(std::size_t count, double timeScale) {
    left_.resize(count);
    right_.resize(count);
    studio_.Read(left_.data(), right_.data(), count);
    for (std::vector<float>* line : {&sum_, &difference_, &data_}) Advance(line, count);
    for (std::size_t i = 0; i < count; ++i) {
        sum_[kTaps + i] = kProgramme_Hz / 2 * (left_[i] + right_[i]);
        difference_[kTaps + i] = kProgramme_Hz / 2 * (left_[i] - right_[i]);
    }
    const double bitsPerSample = transmitter::kPilot_Hz / 16 / kStudioRate_Hz * timeScale;
    for (std::size_t i = 0; i < count; ++i) {
        data_[kTaps + i] =
            rds_ ? kRdsDeviation_Hz *
                       static_cast<float>(rds_->At(rdsBits_ + bitsPerSample * static_cast<double>(i)))
                 : 0;
    }
    rdsBits_ += bitsPerSample * static_cast<double>(count);
}

void CStationSignal::AddMultiplex(std::size_t count, double timeScale) {
    const Interpolation& interpolation = TheInterpolation();
    const double step_turns = transmitter::kPilot_Hz / kStationRate_Hz * timeScale;
    std::copy(deviation_Hz_.end() - 2 * kNeighbours, deviation_Hz_.end(), deviation_Hz_.begin());
    deviation_Hz_.resize(2 * kNeighbours + count);
    float* deviation_Hz = &deviation_Hz_[2 * kNeighbours];
    handset::CTurning pilot(pilot_turns_, step_turns);
    for (std::size_t i = 0; i < count; ++i) {
        const float* row = &interpolation.rows[i % kStationFactor * kTaps];
        const std::size_t at = 1 + i / kStationFactor;
        const auto sine = static_cast<float>(pilot.Sine());
        const auto cosine = static_cast<float>(pilot.Cosine());
        float value = Sum(&sum_[at], row);
        // The pilot, its second harmonic for the difference and its third for the data (ITU-R BS.450-3, 2.2).
        if (stereo_) value += 2 * sine * cosine * Sum(&difference_[at], row) + kPilotDeviation_Hz * sine;
        if (rds_) value += (3 - 4 * sine * sine) * sine * Sum(&data_[at], row);
        deviation_Hz[i] = value;
        pilot.Next();
    }
    pilot_turns_ += step_turns * static_cast<double>(count);
    pilot_turns_ -= std::floor(pilot_turns_);
}

void CStationSignal::Modulate(std::complex<float>* carrier, std::size_t count, double offset_Hz) {
    constexpr double kTurn = 4294967296.0;
    const auto scale = static_cast<float>(kTurn / kStationRate_Hz);
    const auto offset =
        static_cast<std::uint32_t>(static_cast<std::int64_t>(offset_Hz * kTurn / kStationRate_Hz));
    phases_.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const float* middle = &deviation_Hz_[i + kNeighbours];
        const float step_Hz = kWeights[0] * middle[0] + kWeights[1] * (middle[1] + middle[-1]) +
                              kWeights[2] * (middle[2] + middle[-2]);
        phase_ += static_cast<std::uint32_t>(static_cast<std::int32_t>(step_Hz * scale)) + offset;
        phases_[i] = phase_;
    }
    auto* parts = reinterpret_cast<float*>(carrier);
    constexpr std::uint32_t kQuarter = 0x40000000;
    for (std::size_t i = 0; i < count; ++i) {
        parts[2 * i] = Sine(phases_[i] + kQuarter);
        parts[2 * i + 1] = Sine(phases_[i]);
    }
}

void CStationSignal::Read(std::complex<float>* carrier, std::size_t count, double offset_Hz,
                          double timeScale) {
    ReadStudio(count / kStationFactor, timeScale);
    AddMultiplex(count, timeScale);
    Modulate(carrier, count, offset_Hz);
}

}  // namespace ether
