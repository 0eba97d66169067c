// The multiplex of a station from aerial samples, made plainly: for decoders that begin there.
#pragma once

#include <complex>
#include <cstdint>
#include <vector>

namespace bench {

// The rate at which they want it.
constexpr double kPeerRate_Hz = 171000;

// Everything in the stream up to `halfWidth_Hz` from its middle, discriminated by the difference of phases;
// 16 bits, of which 75 kHz are a third.
std::vector<std::int16_t> ReferenceMultiplex(const std::vector<std::complex<float>>& samples, double rate_Hz,
                                             double halfWidth_Hz);

}  // namespace bench
