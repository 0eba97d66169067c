// The mixing of programme and hiss.
#include "handset/fmdevice/band/receiver_sound.h"

#include <algorithm>
#include <cmath>

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

void AddReception(int level, bool stereo, CNoise* noise, float* frames, std::size_t count) {
    const float gain = ProgrammeGain(level);
    const float hiss = HissAmplitude(level);
    for (std::size_t i = 0; i < count; ++i) {
        float& left = frames[sound::kChannels * i];
        float& right = frames[sound::kChannels * i + 1];
        if (!stereo) {
            left = right = gain * 0.5F * (left + right) + hiss * noise->Next();
            continue;
        }
        left = gain * left + hiss * noise->Next();
        right = gain * right + hiss * noise->Next();
    }
}

}  // namespace fm
