// The days by keys: each takes the focus in its turn and shows it, and Return touches it.
#pragma once

#include <windows.h>

// WM_INITDIALOG.
void GiveDaysKeys(HWND dialog);
