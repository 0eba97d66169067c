// A sum of products in twelve lanes, so that no sum waits for the one before and the compiler may use
// vectors. Portable.
#pragma once

#include <array>
#include <cstddef>

namespace sdr::rds {

template <std::size_t kCount>
float DotProduct(const float* a, const float* b) {
    constexpr std::size_t kLanes = 12;
    static_assert(kCount % kLanes == 0, "whole vectors only");
    std::array<float, kLanes> sums{};
    for (std::size_t i = 0; i < kCount; i += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane) sums[lane] += a[i + lane] * b[i + lane];
    }
    float sum = 0.0f;
    for (const float lane : sums) sum += lane;
    return sum;
}

}  // namespace sdr::rds
