// The automatic scan: walks the whole band and stores every station it stops on in the selected group.
#pragma once

#include <windows.h>

#include <cstddef>

class CMainState;

// The menu command: starts the scan on a thread of its own and disables the main window until
// WM_AUTOSCAN_FINISHED.
void StartAutoScan(CMainState& state, HWND window);

// Name of a found station: prefix, blank, and the number, whose leading zero is a blank. `number` from 1.
void FormatScannedName(const WCHAR* prefix, int number, WCHAR* name, std::size_t capacity);
