// What a station plays as it goes to its mast: pre-emphasised, limited, at 48 kHz. Portable.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "handset/fmdevice/band/generators.h"

namespace ether {

inline constexpr double kStudioRate_Hz = 48000;

class CStudio {
  public:
    explicit CStudio(std::unique_ptr<fm::IGenerator> programme);

    // The next `count` samples of each side; 1 is all that the station gives its programme. Nothing from 18.5
    // kHz on, which keeps the pilot clear.
    void Read(float* left, float* right, std::size_t count);

  private:
    void Refill();

    std::unique_ptr<fm::IGenerator> programme_;
    std::vector<float> left_;  // of the programme, at its own rate; the first is under the filter's first tap
    std::vector<float> right_;
    std::size_t at_ = 0;
    std::size_t phase_ = 0;
    float loudest_ = 1;
};

}  // namespace ether
