// Pictures of the desktop.
#pragma once

#include <windows.h>

#include <string>

namespace screens {

// As a PNG, once it has stood still for a moment. What moves all the time, like a text that runs, is taken as
// it is.
void TakePicture(const RECT& area, const std::wstring& file);

}  // namespace screens
