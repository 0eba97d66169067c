// The dialog that says what this program is.
#pragma once

#include <windows.h>

void ShowInformation(HWND owner);
