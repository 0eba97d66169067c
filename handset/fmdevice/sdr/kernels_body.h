// The inner loops, once for each set of instructions: included by one source for each, which says how many
// floats go into a register. Nothing of the standard library is called here, whose inline functions the
// linker would share with sources for lesser processors.
#pragma once

#include <cstddef>
#include <cstdint>

#include "handset/fmdevice/sdr/kernels.h"

namespace sdr {
namespace {

constexpr std::size_t kLanes = KORA_SDR_LANES;
using Lanes = float __attribute__((vector_size(sizeof(float) * KORA_SDR_LANES)));
using Bits = std::int32_t __attribute__((vector_size(sizeof(float) * KORA_SDR_LANES)));
using Bytes = std::uint8_t __attribute__((vector_size(KORA_SDR_LANES)));

inline Lanes Load(const float* from) {
    Lanes lanes;
    __builtin_memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

inline void Store(float* to, Lanes lanes) {
    __builtin_memcpy(to, &lanes, sizeof lanes);
}

inline Lanes All(float value) {
    return value - Lanes{};
}

#if KORA_SDR_LANES == 8
inline Lanes EvenOf(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 0, 2, 4, 6, 8, 10, 12, 14);
}
inline Lanes OddOf(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 1, 3, 5, 7, 9, 11, 13, 15);
}
inline Lanes LowerTurns(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11);
}
inline Lanes UpperTurns(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15);
}
inline Lanes Swapped(Lanes a) {
    return __builtin_shufflevector(a, a, 1, 0, 3, 2, 5, 4, 7, 6);
}
#else
inline Lanes EvenOf(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 0, 2, 4, 6);
}
inline Lanes OddOf(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 1, 3, 5, 7);
}
inline Lanes LowerTurns(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 0, 4, 1, 5);
}
inline Lanes UpperTurns(Lanes a, Lanes b) {
    return __builtin_shufflevector(a, b, 2, 6, 3, 7);
}
inline Lanes Swapped(Lanes a) {
    return __builtin_shufflevector(a, a, 1, 0, 3, 2);
}
#endif

inline float Sum(Lanes lanes) {
    float sum = 0.0f;
    for (std::size_t i = 0; i < kLanes; ++i) sum += lanes[i];
    return sum;
}

inline void StorePair(float* to, Lanes sum) {
    float even = 0.0f;
    float odd = 0.0f;
    for (std::size_t i = 0; i < kLanes; i += 2) {
        even += sum[i];
        odd += sum[i + 1];
    }
    to[0] = even;
    to[1] = odd;
}

// Two results at a time, so that each tap is read once for both.
void Filter(const float* pairs, std::size_t step, const float* taps, std::size_t tapFloats, float* outputs,
            std::size_t count) {
    std::size_t i = 0;
    for (; i + 2 <= count; i += 2) {
        const float* first = pairs + i * step;
        const float* second = first + step;
        Lanes sum1a{}, sum1b{}, sum2a{}, sum2b{};
        for (std::size_t k = 0; k < tapFloats; k += 2 * kLanes) {
            const Lanes a = Load(taps + k);
            const Lanes b = Load(taps + k + kLanes);
            sum1a += a * Load(first + k);
            sum1b += b * Load(first + k + kLanes);
            sum2a += a * Load(second + k);
            sum2b += b * Load(second + k + kLanes);
        }
        StorePair(outputs + 2 * i, sum1a + sum1b);
        StorePair(outputs + 2 * i + 2, sum2a + sum2b);
    }
    if (i == count) return;
    const float* last = pairs + i * step;
    Lanes a{}, b{};
    for (std::size_t k = 0; k < tapFloats; k += 2 * kLanes) {
        a += Load(taps + k) * Load(last + k);
        b += Load(taps + k + kLanes) * Load(last + k + kLanes);
    }
    StorePair(outputs + 2 * i, a + b);
}

// Sine and cosine by turning a point on: a fresh start after each few hundred steps keeps what rounding adds
// below 1e-5.
struct Turning {
    Lanes cosine;
    Lanes sine;
};

// `each` samples side by side in the lanes, every one `repeat` times.
inline Turning Turn(double phase_rad, double step_rad, std::size_t repeat) {
    Turning turning{};
    for (std::size_t i = 0; i < kLanes; ++i) {
        const double angle = phase_rad + step_rad * static_cast<double>(i / repeat);
        turning.cosine[i] = static_cast<float>(__builtin_cos(angle));
        turning.sine[i] = static_cast<float>(__builtin_sin(angle));
    }
    return turning;
}

inline void Advance(Turning& turning, float cosine, float sine) {
    const Lanes next = turning.cosine * cosine - turning.sine * sine;
    turning.sine = turning.sine * cosine + turning.cosine * sine;
    turning.cosine = next;
}

constexpr std::size_t kFreshStart = 512;

inline bool Within(float value) {
    return value >= -kLargestValue && value <= kLargestValue;
}

void Rotate(float* pairs, std::size_t count, const float* dc, double phase_rad, double step_rad) {
    constexpr std::size_t kSamples = kLanes / 2;
    const double stride = step_rad * static_cast<double>(kSamples);
    const float strideCosine = static_cast<float>(__builtin_cos(stride));
    const float strideSine = static_cast<float>(__builtin_sin(stride));
    Lanes sign{}, offset{};
    for (std::size_t i = 0; i < kLanes; ++i) {
        sign[i] = i % 2 == 0 ? -1.0f : 1.0f;
        offset[i] = dc[i % 2];
    }
    for (std::size_t begin = 0; begin < count; begin += kFreshStart) {
        const std::size_t end = count - begin < kFreshStart ? count : begin + kFreshStart;
        Turning turning = Turn(phase_rad + step_rad * static_cast<double>(begin), step_rad, 2);
        std::size_t i = begin;
        for (; i + kSamples <= end; i += kSamples) {
            const Lanes value = Load(pairs + 2 * i);
            const Bits within = (value >= -kLargestValue) & (value <= kLargestValue);
            const Lanes z = within ? value - offset : Lanes{};
            Store(pairs + 2 * i, z * turning.cosine + Swapped(z) * (turning.sine * sign));
            Advance(turning, strideCosine, strideSine);
        }
        for (std::size_t lane = 0; i < end; ++i, lane += 2) {
            const float re = Within(pairs[2 * i]) ? pairs[2 * i] - dc[0] : 0.0f;
            const float im = Within(pairs[2 * i + 1]) ? pairs[2 * i + 1] - dc[1] : 0.0f;
            pairs[2 * i] = re * turning.cosine[lane] - im * turning.sine[lane];
            pairs[2 * i + 1] = im * turning.cosine[lane] + re * turning.sine[lane];
        }
    }
}

// The arc tangent on 0 to 1, divided by its argument, in powers of the argument's square: through the
// Chebyshev nodes of the square, off by 7e-8 at most.
constexpr float kArcTangent[] = {0.999999882f, -0.333318127f, 0.199669618f, -0.140032902f,
                                 0.098688655f, -0.058829753f, 0.023780519f, -0.004559792f};
constexpr std::size_t kArcTangentTerms = sizeof kArcTangent / sizeof *kArcTangent;

// The angle of a complex number.
inline Lanes Angle(Lanes re, Lanes im) {
    const Lanes absRe = re < 0.0f ? -re : re;
    const Lanes absIm = im < 0.0f ? -im : im;
    const Bits steep = absIm > absRe;
    const Lanes greater = steep ? absIm : absRe;
    const Lanes smaller = steep ? absRe : absIm;
    const Lanes t = smaller / (greater > 1e-30f ? greater : All(1e-30f));
    const Lanes s = t * t;
    Lanes angle = All(kArcTangent[kArcTangentTerms - 1]);
    for (std::size_t k = kArcTangentTerms - 1; k-- > 0;) angle = angle * s + kArcTangent[k];
    angle *= t;
    angle = steep ? 1.57079632679f - angle : angle;
    angle = re < 0.0f ? 3.14159265359f - angle : angle;
    return im < 0.0f ? -angle : angle;
}

void Discriminate(const float* pairs, std::size_t count, float gain, float* output) {
    for (std::size_t i = 0; i < count; i += kLanes) {
        // The last few again rather than beyond the end.
        const std::size_t at = count - i >= kLanes || count < kLanes ? i : count - kLanes;
        if (count < kLanes) {
            Lanes re{}, im{};
            for (std::size_t k = 0; k < count; ++k) {
                const float* z = pairs + 2 * k;
                re[k] = z[0] * z[-2] + z[1] * z[-1];
                im[k] = z[1] * z[-2] - z[0] * z[-1];
            }
            const Lanes angle = Angle(re, im) * gain;
            for (std::size_t k = 0; k < count; ++k) output[k] = angle[k];
            return;
        }
        const float* z = pairs + 2 * at;
        const Lanes a = Load(z), b = Load(z + kLanes), c = Load(z - 2), d = Load(z + kLanes - 2);
        const Lanes i1 = EvenOf(a, b), q1 = OddOf(a, b), i0 = EvenOf(c, d), q0 = OddOf(c, d);
        Store(output + at, Angle(i1 * i0 + q1 * q0, q1 * i0 - i1 * q0) * gain);
    }
}

void Five(const float* input, std::size_t count, const float* halfTaps, float* output) {
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        const float* x = input + i;
        Store(output + i, Load(x) * halfTaps[0] + (Load(x - 1) + Load(x + 1)) * halfTaps[1] +
                              (Load(x - 2) + Load(x + 2)) * halfTaps[2]);
    }
    for (; i < count; ++i) {
        const float* x = input + i;
        output[i] = x[0] * halfTaps[0] + (x[-1] + x[1]) * halfTaps[1] + (x[-2] + x[2]) * halfTaps[2];
    }
}

PilotSums MixPilot(const float* multiplex, std::size_t count, double phase_turns, double step_turns,
                   const float* window, float* pairs) {
    constexpr double kTurn = 6.283185307179586;
    const double stride = kTurn * step_turns * static_cast<double>(kLanes);
    const float strideCosine = static_cast<float>(__builtin_cos(stride));
    const float strideSine = static_cast<float>(__builtin_sin(stride));
    Turning turning = Turn(kTurn * phase_turns, kTurn * step_turns, 1);
    Lanes sine{}, cosine{}, risingSine{}, risingCosine{};
    for (std::size_t i = 0; i + kLanes <= count; i += kLanes) {
        const Lanes m = Load(multiplex + i);
        const Lanes w = Load(window + i);
        const Lanes inPhase = m * turning.sine;
        const Lanes inQuadrature = m * turning.cosine;
        sine += inPhase;
        cosine += inQuadrature;
        risingSine += w * inPhase;
        risingCosine += w * inQuadrature;
        const Lanes difference = 4.0f * inPhase * turning.cosine;
        Store(pairs + 2 * i, LowerTurns(m, difference));
        Store(pairs + 2 * i + kLanes, UpperTurns(m, difference));
        Advance(turning, strideCosine, strideSine);
    }
    return {Sum(sine), Sum(cosine), Sum(risingSine), Sum(risingCosine)};
}

Moments SumMoments(const float* pairs, std::size_t count) {
    Lanes second{}, fourth{};
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        const Lanes a = Load(pairs + 2 * i), b = Load(pairs + 2 * i + kLanes);
        const Lanes re = EvenOf(a, b), im = OddOf(a, b);
        const Lanes power = re * re + im * im;
        second += power;
        fourth += power * power;
    }
    Moments sums{Sum(second), Sum(fourth)};
    for (; i < count; ++i) {
        const double power = static_cast<double>(pairs[2 * i]) * pairs[2 * i] +
                             static_cast<double>(pairs[2 * i + 1]) * pairs[2 * i + 1];
        sums.second += power;
        sums.fourth += power * power;
    }
    return sums;
}

void FromUnsigned8(const std::uint8_t* bytes, std::size_t count, float offset, float scale, float* output) {
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        Bytes row;
        __builtin_memcpy(&row, bytes + i, sizeof row);
        Store(output + i, (__builtin_convertvector(row, Lanes) - offset) * scale);
    }
    for (; i < count; ++i) output[i] = (static_cast<float>(bytes[i]) - offset) * scale;
}

constexpr Kernels MakeKernels(const char* name) {
    return {name, Filter, Rotate, Discriminate, Five, MixPilot, SumMoments, FromUnsigned8};
}

}  // namespace
}  // namespace sdr
