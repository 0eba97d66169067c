// A sample of the antenna's signal. Portable.
#pragma once

#include <complex>

namespace sdr {

// I is the real part. 1.0 is the full scale of the converter.
using Sample = std::complex<float>;

// The same row as I and Q in turn, as the kernels take it; the standard grants this view.
inline float* Pairs(Sample* samples) {
    return reinterpret_cast<float*>(samples);
}
inline const float* Pairs(const Sample* samples) {
    return reinterpret_cast<const float*>(samples);
}

}  // namespace sdr
