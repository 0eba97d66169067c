// The automatic scan: walks the whole band and stores every station it stops on in the selected group.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstddef>

class CMainState;

// What is known of the scan's thread.
struct ScanThread {
    // The program is closing: the scan makes no further step and shows no further box. Set by shut-down.
    std::atomic<bool> bEndNow{false};
    // Whoever finds it set releases and closes the mutex, once; the main state keeps the stale handle.
    std::atomic<bool> bMutexOpen{false};
    DWORD dwId = 0;
    HANDLE hOver = nullptr;  // manual-reset: no thread runs. Null before the first scan
    // Tenths of the band, as they stand on the screen; below 0 while no walk is made.
    std::atomic<int> nLevel{-1};
};

// The menu command: starts the scan on a thread of its own and disables the main window until
// WM_AUTOSCAN_FINISHED. Without a thread nothing is disabled.
void StartAutoScan(CMainState& state, HWND window);

// For WM_PAINT: the progress of a scan that walks, over what was painted.
void RepaintScanProgress(CMainState& state);

// For shut-down: ends a scan that runs and waits until its thread has made its last call. Its boxes are
// answered, and so is what it sends to the caller's windows.
void EndAutoScan(CMainState& state);

// Releases and closes the scan's mutex, unless that was done.
void ReleaseScanMutex(CMainState& state);

// Name of a found station: prefix, blank, and the number, whose leading zero is a blank. `number` from 1.
void FormatScannedName(const WCHAR* prefix, int number, WCHAR* name, std::size_t capacity);
