// Carrier samples at any rate from those at the multiplex rate. Portable.
#pragma once

#include <complex>
#include <cstddef>
#include <vector>

namespace transmitter {

// A low-pass that is asked for at the new sample times: what would fold back is gone to -120 dB. All that
// reaches 0.45 of the new rate passes, and at most 260 kHz.
class CRateChange {
  public:
    // `ratio`: old samples for each new one.
    explicit CRateChange(double ratio);

    // Samples that come in.
    void Write(const std::complex<float>* samples, std::size_t count);
    // Takes up to `count` new ones; fewer when more has to come in first.
    std::size_t Read(std::complex<float>* samples, std::size_t count);

  private:
    // The usual rates need whole ones alone; between two of them the weights run straight.
    static constexpr std::size_t kPhases = 960;
    template <typename Weights>
    void Weigh(std::size_t at, float* real, float* imaginary, Weights weights) const;
    void Evaluate(std::size_t at, double part, float* real, float* imaginary) const;

    double ratio_;
    std::size_t taps_;          // a multiple of 8
    std::vector<float> table_;  // kPhases + 1 rows, each in the order of the samples
    std::vector<float> real_;
    std::vector<float> imaginary_;
    std::size_t at_ = 0;  // the first sample under the filter
    double part_ = 0;     // of a sample, behind it
};

}  // namespace transmitter
