// A small window of a test's own with the real skin: what the main window procedure does for skin and
// controls, and nothing else of it. For code that is built as the application is.
#pragma once

#include <windows.h>

#include "shell/main_state.h"
#include "skin/skin_tables.h"

namespace test {

// The skin's tables as they are at the start of the program: what an earlier test left in them is taken back.
SkinTables FreshSkinTables();

// Shown, never active, and with the state in its user data; the caller destroys it.
HWND CreateSkinWindow(CMainState& state);

}  // namespace test
