// Power spectra by the fast Fourier transform. Portable.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "handset/fmdevice/sdr/sample.h"

namespace sdr {

// Under a Hann window. One thread at a time.
class CFourierTransform {
  public:
    // A power of two.
    explicit CFourierTransform(std::size_t size);
    ~CFourierTransform();
    CFourierTransform(const CFourierTransform&) = delete;
    CFourierTransform& operator=(const CFourierTransform&) = delete;

    [[nodiscard]] std::size_t Size() const { return window_.size(); }
    // The power density of Size() samples, in samples' power times their period, added to `density`: bin k
    // stands for k * rate / Size(), the upper half for the frequencies below 0.
    void AddDensity(const Sample* samples, std::vector<double>* density);
    void AddDensity(const float* samples, std::vector<double>* density);

  private:
    struct Plan;
    void Transform(std::vector<double>* density);

    std::unique_ptr<Plan> plan_;
    std::vector<float> window_;
    std::vector<Sample> input_;
    std::vector<Sample> output_;
};

}  // namespace sdr
