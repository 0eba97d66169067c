// How well two colours can be told apart.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace test {

// Of a colour as 0xRRGGBB.
inline double Luminance(std::uint32_t colour) {
    const auto linear = [](std::uint32_t part) {
        const double share = (part & 0xFF) / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour >> 16) + 0.7152 * linear(colour >> 8) + 0.0722 * linear(colour);
}

// 1 to 21 (WCAG 2.1, "contrast ratio"). A text can be read from 4.5 on.
[[nodiscard]] inline double Contrast(std::uint32_t first, std::uint32_t second) {
    const double a = Luminance(first), b = Luminance(second);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace test
