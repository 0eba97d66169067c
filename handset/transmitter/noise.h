// White Gaussian noise, and other draws, the same for the same seed on every machine. Portable.
#pragma once

#include <complex>
#include <cstdint>

namespace transmitter {

class CNoise {
  public:
    explicit CNoise(std::uint64_t seed);

    // Evenly in 0 to 1.
    double Uniform();
    // Two independent parts of variance 1 each.
    std::complex<float> Gaussian();

  private:
    std::uint64_t Next();
    std::uint64_t state_[4] = {};
};

}  // namespace transmitter
