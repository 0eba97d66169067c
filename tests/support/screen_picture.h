// What stands on the screen, to be kept or to be compared with itself at another time.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/support/radio.h"

namespace test {

// 0x00RRGGBB, rows from the top.
using ScreenPicture = std::vector<std::uint32_t>;

// `area` is on the screen, or in the client area of the radio's window; its right and lower edges are
// outside.
ScreenPicture PictureOf(const RECT& area);
ScreenPicture PictureOf(const Radio& radio, const RECT& area);
// What is painted comes to the screen a little later: the picture that no longer changes.
ScreenPicture SettledPicture(const Radio& radio, const RECT& area);
// How many of its pixels have that colour.
std::size_t PixelsOf(const ScreenPicture& picture, COLORREF colour);
// The colour that most of its pixels have, as 0xRRGGBB.
DWORD MostOf(const ScreenPicture& picture);

}  // namespace test
