// The fonts that the program under test asks for.
#pragma once

#include <windows.h>

#include <vector>

namespace test {

// What was given to CreateFontIndirectW, in its order; the test's own calls are among them.
extern std::vector<LOGFONTW> g_askedFonts;

}  // namespace test
