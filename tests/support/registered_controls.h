// The control classes that the program under test registers, for a test program whose calls of
// InitCommonControlsEx the linker sends through it (--wrap=__imp_InitCommonControlsEx).
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

namespace test {

// What was asked for (ICC_…), in order, since the test emptied it.
extern std::vector<DWORD> g_registeredControls;
// Called with each, before it is registered; null: nobody.
extern std::function<void(DWORD)> g_onRegisterControls;

}  // namespace test
