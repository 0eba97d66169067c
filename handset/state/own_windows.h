// Which windows are this handset's. Several handsets may stand on one desktop, each with its own phone and
// its own radio; what one of them looks for is never another's. Host code only.
#pragma once

#include <windows.h>

namespace handset {

// The calling process is a program of this handset from now until it ends: the others find its windows. The
// handset is the one that the state key names (handset_state.h).
void JoinHandset();

// Whether the window belongs to a program of this handset. The calling process's own always do.
bool IsOwnWindow(HWND window);

// As FindWindowW, among this handset's windows alone.
HWND FindOwnWindow(const wchar_t* windowClass, const wchar_t* title = nullptr);

}  // namespace handset
