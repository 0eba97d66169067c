// The mixing of programme and hiss.
#include "handset/fmdevice/band/receiver_sound.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "handset/sound/format.h"

namespace fm {

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

CHiss::CHiss(std::uint32_t seed) {
    // No row may be all zeros, nor the same as another one.
    for (std::uint32_t row = 0; row < 4; ++row) state_[row] = (seed + row * 0x9E3779B9u) | 1;
}

void AddReception(int level, bool stereo, CHiss* hiss, float* frames, std::size_t count) {
    const float gain = ProgrammeGain(level);
    const float amplitude = HissAmplitude(level);
    CHiss row = *hiss;
    const auto received = [&](CHiss::Four sides) {
        CHiss::Four noise = row.Next();
        if (!stereo) {
            const CHiss::Four others = {sides[1], sides[0], sides[3], sides[2]};
            sides = 0.5F * (sides + others);
            noise = CHiss::Four{noise[0], noise[0], noise[2], noise[2]};
        }
        return gain * sides + amplitude * noise;
    };
    CHiss::Four sides = {};
    constexpr std::size_t kTwoFrames = sizeof sides, kFrame = kTwoFrames / 2;
    for (; count >= 2; count -= 2, frames += 2 * sound::kChannels) {
        std::memcpy(&sides, frames, kTwoFrames);
        sides = received(sides);
        std::memcpy(frames, &sides, kTwoFrames);
    }
    if (count == 1) {
        std::memcpy(&sides, frames, kFrame);
        sides = received(sides);
        std::memcpy(frames, &sides, kFrame);
    }
    *hiss = row;
}

}  // namespace fm
