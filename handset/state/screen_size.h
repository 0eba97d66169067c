// The size of the handset's display.
#pragma once

#include <cstdint>

namespace handset {

// Pixels of a side.
inline constexpr std::uint32_t kSmallestScreen = 160;
inline constexpr std::uint32_t kLargestScreen = 1280;

// As the state has it (240, 320); what is no size counts as the nearest.
std::uint32_t ScreenWidth();
std::uint32_t ScreenHeight();

}  // namespace handset
