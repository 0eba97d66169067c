// Dialogs on a display of twice the pixels: the device counts twice the dots to the inch there, so a font of
// so many points is twice as high, and what is measured in dialog units grows with it.
#pragma once

#include <windows.h>

#include <vector>

namespace coredll {

// How many pixels of this display stand for one of the usual one.
[[nodiscard]] int DisplayScale();

// The template with its font as many times as large. Empty where it stays as it is: it names no font, or is
// of the extended kind.
[[nodiscard]] std::vector<BYTE> ScaledTemplate(const DLGTEMPLATE& layout, int scale);

}  // namespace coredll
