// Mixing down is done here, the change of rate by libsoxr.
#include "handset/capture/source/sound_converter.h"

#include <soxr.h>

#include <algorithm>
#include <iterator>
#include <new>

#include "handset/sound/format.h"
#include "handset/sound/samples.h"

namespace capture {
namespace {

// The nearest sample, halves to the even one, as lrintf; which is a call. A number of 24 bits that is added
// has no room for a part of one.
std::int16_t Rounded(float sample) {
    constexpr float kNoParts = 12582912.0f;
    return static_cast<std::int16_t>(std::clamp(sample, -32768.0f, 32767.0f) + kNoParts - kNoParts);
}

}  // namespace

// From frames of both sides as they come, or from their mean.
struct CSoundConverter::Resampler {
    Resampler(std::uint32_t rate_Hz, std::size_t channels)
        : ratio(static_cast<double>(rate_Hz) / sound::kSampleRate_Hz) {
        soxr_io_spec_t form = soxr_io_spec(channels == 2 ? SOXR_INT16_I : SOXR_FLOAT32_I, SOXR_INT16_I);
        // A mean keeps the size of its samples.
        if (channels == 1) form.scale = 1.0 / 32768;
        // The same sound gives the same file.
        form.flags |= SOXR_NO_DITHER;
        soxr_quality_spec_t quality = soxr_quality_spec(SOXR_16_BITQ, 0);
        quality.passband_end = kPassBand;
        // Small blocks: what stays in the filter has not been recorded yet.
        soxr_runtime_spec_t runtime = soxr_runtime_spec(1);
        runtime.log2_min_dft_size = kSmallestBlock_log2;
        soxr_error_t error = nullptr;
        handle = soxr_create(sound::kSampleRate_Hz, rate_Hz, static_cast<unsigned>(channels), &error, &form,
                             &quality, &runtime);
        if (handle == nullptr) throw std::bad_alloc();
    }
    ~Resampler() { soxr_delete(handle); }
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    static constexpr double kPassBand = 0.91;  // of the new half rate; its very end is a little down
    static constexpr unsigned kSmallestBlock_log2 = 8;

    const double ratio;
    soxr_t handle = nullptr;
};

CSoundConverter::CSoundConverter(std::uint32_t rate_Hz, std::size_t channels) : channels_(channels) {
    if (rate_Hz != sound::kSampleRate_Hz) resampler_ = std::make_unique<Resampler>(rate_Hz, channels);
}

CSoundConverter::~CSoundConverter() = default;

void CSoundConverter::Process(const std::int16_t* frames, std::size_t count,
                              std::vector<std::int16_t>* output) {
    if (count == 0) return;
    const void* input = frames;
    if (channels_ == 1) {
        mean_.resize(count);
        sound::MeanOfSides(frames, count, mean_.data());
        input = mean_.data();
    }
    const std::size_t before = output->size();
    if (resampler_ == nullptr) {
        if (channels_ == 2) output->insert(output->end(), frames, frames + 2 * count);
        if (channels_ == 1) std::transform(mean_.begin(), mean_.end(), std::back_inserter(*output), Rounded);
        return;
    }
    // With room for all that may have been kept back, one call takes everything.
    const auto room =
        static_cast<std::size_t>((static_cast<double>(count) + kMostDelay_s * sound::kSampleRate_Hz) *
                                 resampler_->ratio) +
        1;
    output->resize(before + room * channels_);
    std::size_t made = 0;
    const soxr_error_t error =
        soxr_process(resampler_->handle, input, count, nullptr, output->data() + before, room, &made);
    if (error != nullptr) throw std::bad_alloc();
    output->resize(before + made * channels_);
}

}  // namespace capture
