#include "handset/sound/samples.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "handset/sound/format.h"

namespace sound {
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

// Four frames at once.
void MeanOfSides(const std::int16_t* frames, std::size_t count, float* mean) {
    using FourFrames = std::int32_t __attribute__((vector_size(16)));
    using Unsigned = std::uint32_t __attribute__((vector_size(16)));
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        FourFrames four;
        std::memcpy(&four, frames + 2 * i, sizeof four);
        // The left side lies in the lower half.
        const auto left = reinterpret_cast<FourFrames>(reinterpret_cast<Unsigned>(four) << 16) >> 16;
        const FourFrames sum = left + (four >> 16);
        const Four half = __builtin_convertvector(sum, Four) * 0.5f;
        std::memcpy(mean + i, &half, sizeof half);
    }
    for (; i < count; ++i) mean[i] = static_cast<float>(frames[2 * i] + frames[2 * i + 1]) / 2;
}

void MixDown(std::int16_t* samples, std::size_t count) {
    std::array<float, 256> mean;
    for (std::size_t done = 0; done < count; done += mean.size()) {
        const std::size_t part = std::min(count - done, mean.size());
        std::int16_t* const frames = samples + kChannels * done;
        MeanOfSides(frames, part, mean.data());
        for (std::size_t i = 0; i < part; ++i)
            frames[kChannels * i] = frames[kChannels * i + 1] = static_cast<std::int16_t>(mean[i]);
    }
}

}  // namespace sound
