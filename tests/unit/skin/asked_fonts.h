// The fonts that the program under test asks for.
#pragma once

#include <windows.h>

#include <vector>

namespace test {

// What was given to CreateFontIndirectW since the last call, in its order; the test's own calls are among
// them. Any thread.
std::vector<LOGFONTW> TakeAskedFonts();

}  // namespace test
