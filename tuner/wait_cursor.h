// The wait cursor for the length of a scope.
#pragma once

#include <windows.h>

class WaitCursor {
  public:
    WaitCursor() { SetCursor(LoadCursorW(nullptr, IDC_WAIT)); }
    // The main screen has no cursor of its own to go back to.
    ~WaitCursor() { SetCursor(nullptr); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};
