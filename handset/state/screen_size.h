// The size of the handset's display, and of the bars on it.
#pragma once

#include <cstdint>

namespace handset {

// Pixels of a side.
inline constexpr std::uint32_t kSmallestScreen = 160;
inline constexpr std::uint32_t kLargestScreen = 1280;

// As the state has it (240, 320); what is no size counts as the nearest. Asked for with every paint: see
// CountedStateDword. Any thread.
std::uint32_t ScreenWidth();
std::uint32_t ScreenHeight();
// Every program's next question has it. False when the registry refuses.
bool SetScreenSize(std::uint32_t width, std::uint32_t height);

// Rows of the shell's bar at the top of the display, and of a menu bar at its foot: 26, on a display with
// twice the pixels of the usual one twice as many.
std::uint32_t ShellBarHeight();

}  // namespace handset
