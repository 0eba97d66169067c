// What the shell's two bars share: its colours and their rows on a display of the usual size.
#pragma once

#include <windows.h>

namespace handset {

inline constexpr COLORREF kShellGround = RGB(17, 19, 18);
inline constexpr COLORREF kShellAccent = RGB(141, 194, 31);
inline constexpr COLORREF kShellText = RGB(255, 255, 255);
inline constexpr int kUsualBarRows = 26;

}  // namespace handset
