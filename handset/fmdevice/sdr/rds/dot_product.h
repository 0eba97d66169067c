// A sum of products in four lanes, so that the compiler may use whatever vectors the machine has. Portable.
#pragma once

#include <array>
#include <cstddef>

namespace sdr::rds {

template <std::size_t kCount>
float DotProduct(const float* a, const float* b) {
    constexpr std::size_t kLanes = 4;
    static_assert(kCount % kLanes == 0, "whole vectors only");
    std::array<float, kLanes> sums{};
    for (std::size_t i = 0; i < kCount; i += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane) sums[lane] += a[i + lane] * b[i + lane];
    }
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

}  // namespace sdr::rds
