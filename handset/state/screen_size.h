// The size of the handset's display, and of the bars on it.
#pragma once

#include <cstdint>

namespace handset {

// Pixels of a side.
inline constexpr std::uint32_t kSmallestScreen = 160;
inline constexpr std::uint32_t kLargestScreen = 1280;

// As the state has it (240, 320); what is no size counts as the nearest.
std::uint32_t ScreenWidth();
std::uint32_t ScreenHeight();

// Rows of the shell's bar at the top of the display, and of a menu bar at its foot: 26, on a display with
// twice the pixels of the usual one twice as many.
std::uint32_t ShellBarHeight();

}  // namespace handset
