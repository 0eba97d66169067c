// The resampling itself is libsoxr's.
#include "handset/fmdevice/sdr/clock_bridge.h"

#include <soxr.h>

#include <algorithm>

#include "handset/fmdevice/sdr/audio_filter.h"

namespace sdr {
namespace {

constexpr double kMost = CClockBridge::kMostCorrection_ppm * 1e-6;
// The fill jumps by whatever a stick sends at once, some 70 ms, many times a second; this mean does not.
constexpr double kMean_s = 5.0;
// A loop of the second order with this natural frequency and no overshoot. While it finds a difference of 300
// ppm the fill moves by a few milliseconds.
constexpr double kNatural_rad_s = 0.02;
constexpr double kProportional = 2.0 * kNatural_rad_s;
constexpr double kIntegral = kNatural_rad_s * kNatural_rad_s;
// Frames over which a new ratio is reached.
constexpr std::size_t kSlew = 480;

}  // namespace

struct CClockBridge::Resampler {
    explicit Resampler(double ratio) {
        const soxr_io_spec_t form = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
        const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, SOXR_VR);
        soxr_error_t error = nullptr;
        handle = soxr_create(ratio * (1.0 + 2.0 * kMost), 1.0, 2, &error, &form, &quality, nullptr);
        if (handle != nullptr) soxr_set_io_ratio(handle, ratio, 0);
    }
    ~Resampler() { soxr_delete(handle); }
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    soxr_t handle = nullptr;
};

CClockBridge::CClockBridge(double hostRate_Hz, double targetFill_s)
    : ratio_(kSoundRate_Hz / hostRate_Hz),
      targetFill_s_(targetFill_s),
      resampler_(std::make_unique<Resampler>(ratio_)) {}

CClockBridge::~CClockBridge() = default;

void CClockBridge::Restart() {
    resampler_ = std::make_unique<Resampler>(ratio_);
    meanError_s_ = mean_s_ = 0.0;
}

void CClockBridge::Follow(double seconds, double fill_s) {
    mean_s_ = std::min(mean_s_ + seconds, kMean_s);
    meanError_s_ += std::min(seconds / mean_s_, 1.0) * (fill_s - targetFill_s_ - meanError_s_);
    // Before the mean stands for something, nothing follows from it.
    if (mean_s_ < kMean_s) return;
    drift_ = std::clamp(drift_ + kIntegral * meanError_s_ * seconds, -kMost, kMost);
    correction_ = std::clamp(drift_ + kProportional * meanError_s_, -kMost, kMost);
}

void CClockBridge::Process(const float* frames, std::size_t count, double fill_s,
                           std::vector<float>* output) {
    if (count == 0 || resampler_->handle == nullptr) return;
    Follow(static_cast<double>(count) / kSoundRate_Hz, fill_s);
    const double ratio = ratio_ * (1.0 + correction_);
    soxr_set_io_ratio(resampler_->handle, ratio, kSlew);
    const auto room = static_cast<std::size_t>(static_cast<double>(count) / ratio) + 64;
    while (count > 0) {
        const std::size_t before = output->size();
        output->resize(before + 2 * room);
        std::size_t used = 0;
        std::size_t made = 0;
        const soxr_error_t error =
            soxr_process(resampler_->handle, frames, count, &used, output->data() + before, room, &made);
        output->resize(before + 2 * made);
        const std::size_t silent = std::min(silent_, made);
        std::fill_n(output->begin() + static_cast<std::ptrdiff_t>(before), 2 * silent, 0.0F);
        silent_ -= silent;
        if (error != nullptr || (used == 0 && made == 0)) return;
        frames += 2 * used;
        count -= used;
    }
}

}  // namespace sdr
