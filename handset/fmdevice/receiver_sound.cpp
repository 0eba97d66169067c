// The mixing of programme and hiss.
#include "handset/fmdevice/receiver_sound.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "handset/fmdevice/sound_format.h"

namespace fm {
namespace {

// Four numbers in one register, a compiler's vector types.
using Four = float __attribute__((vector_size(16)));
using FourWhole = std::int32_t __attribute__((vector_size(16)));
using FourSamples = std::int16_t __attribute__((vector_size(8)));

// The nearest sample, halves away from 0, of numbers from -1 to 1; louder ones are clipped.
FourSamples Rounded(Four numbers) {
    constexpr Four kLoudest = {1.0F, 1.0F, 1.0F, 1.0F};
    numbers = numbers < -kLoudest ? -kLoudest : numbers;
    numbers = numbers > kLoudest ? kLoudest : numbers;
    const Four scaled = numbers * 32767.0F;
    // One half with the sign of its number.
    const FourWhole half =
        (reinterpret_cast<FourWhole>(scaled) & INT32_MIN) | reinterpret_cast<FourWhole>(kLoudest * 0.5F);
    const auto whole = __builtin_convertvector(scaled + reinterpret_cast<Four>(half), FourWhole);
    return __builtin_convertvector(whole, FourSamples);
}

}  // namespace

float ProgrammeGain(int level) {
    // Frequency modulation captures: a little above the noise the programme is there at full strength.
    constexpr int kNothing = 4;
    constexpr int kFull = 20;
    return std::clamp(static_cast<float>(level - kNothing) / (kFull - kNothing), 0.0F, 1.0F);
}

float HissAmplitude(int level) {
    // 20 dB less hiss for every 25 of level.
    return 0.4F * std::pow(10.0F, static_cast<float>(-std::clamp(level, 0, 100)) / 25.0F);
}

void AddReception(int level, bool stereo, CNoise* noise, float* frames, std::size_t count) {
    const float gain = ProgrammeGain(level);
    const float hiss = HissAmplitude(level);
    for (std::size_t i = 0; i < count; ++i) {
        float& left = frames[kChannels * i];
        float& right = frames[kChannels * i + 1];
        if (!stereo) {
            left = right = gain * 0.5F * (left + right) + hiss * noise->Next();
            continue;
        }
        left = gain * left + hiss * noise->Next();
        right = gain * right + hiss * noise->Next();
    }
}

void ToSamples(const float* frames, std::size_t count, float gainBefore, float gain, std::int16_t* samples) {
    const float step = (gain - gainBefore) / static_cast<float>(count);
    // Two frames at once, then what is left; both ways give the same samples.
    Four number = {1.0F, 1.0F, 2.0F, 2.0F};
    std::size_t i = 0;
    for (; i + 2 <= count; i += 2, number += 2.0F) {
        Four four;
        std::memcpy(&four, frames + kChannels * i, sizeof four);
        const auto rounded = Rounded((gainBefore + step * number) * four);
        std::memcpy(samples + kChannels * i, &rounded, sizeof rounded);
    }
    for (; i < count; ++i) {
        const float now = gainBefore + step * static_cast<float>(i + 1);
        const Four four = {now * frames[kChannels * i], now * frames[kChannels * i + 1]};
        const auto rounded = Rounded(four);
        std::memcpy(samples + kChannels * i, &rounded, kFrameBytes);
    }
}

void MixDown(std::int16_t* samples, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const int sum = samples[kChannels * i] + samples[kChannels * i + 1];
        samples[kChannels * i] = samples[kChannels * i + 1] = static_cast<std::int16_t>(sum / 2);
    }
}

}  // namespace fm
