// The inner loops of the receiver, each in a plain form and in one for processors with AVX2. Portable.
//
// Complex samples lie as I and Q in turn; taps of a real filter for them as well, each twice. Rows may begin
// anywhere.
#pragma once

#include <cstddef>
#include <cstdint>

namespace sdr {

// The count of floats that a row of taps is a multiple of.
constexpr std::size_t kTapsMultiple = 16;

// Nothing real is that far beyond full scale, and its fourth power is still a float.
constexpr float kLargestValue = 1000.0f;

struct PilotSums {
    // The multiplex times sine and cosine of the pilot, all of it and as it comes in under a window's rising
    // half.
    double sine = 0.0;
    double cosine = 0.0;
    double risingSine = 0.0;
    double risingCosine = 0.0;
};

struct Moments {
    double second = 0.0;  // the sum of |z|^2
    double fourth = 0.0;  // the sum of |z|^4
};

struct Kernels {
    const char* name;
    // outputs[i] = the sum of pairs[i * step + k] * taps[k]: `count` complex results, `step` floats apart.
    void (*filter)(const float* pairs, std::size_t step, const float* taps, std::size_t tapFloats,
                   float* outputs, std::size_t count);
    // Takes `dc` (I and Q) away from each sample and turns it by an angle that begins at `phase_rad` and
    // grows by `step_rad`, in place.
    void (*rotate)(float* pairs, std::size_t count, const float* dc, double phase_rad, double step_rad);
    // The angles between neighbours, times `gain`; pairs[-2] and pairs[-1] are the sample before the first.
    void (*discriminate)(const float* pairs, std::size_t count, float gain, float* output);
    // Symmetric filter of five taps around its middle one; reads input[-2] to input[count + 1].
    void (*five)(const float* input, std::size_t count, const float* halfTaps, float* output);
    // Beside each sample m the sample m * 2 sin(2 * 2 pi phase): the sum and the difference of left and
    // right, before their filters. `window` has `count` values; `count` is a multiple of 8.
    PilotSums (*mixPilot)(const float* multiplex, std::size_t count, double phase_turns, double step_turns,
                          const float* window, float* pairs);
    Moments (*moments)(const float* pairs, std::size_t count);
    // (byte - offset) * scale.
    void (*fromUnsigned8)(const std::uint8_t* bytes, std::size_t count, float offset, float scale,
                          float* output);
};

// The best form for this processor, chosen once.
[[nodiscard]] const Kernels& ActiveKernels();
// Each of them, for tests. The one for AVX2 is null where the compiler or the processor has none.
[[nodiscard]] const Kernels* PlainKernels();
[[nodiscard]] const Kernels* Avx2Kernels();

}  // namespace sdr
