// The device's <windows.h>: the desktop's own header, and on top of it what Windows CE 5.2 adds or spells
// differently. The application includes nothing but this for its platform calls; each call is taken from
// COREDLL (see handset/coredll/coredll.def).
#pragma once

#include "menu_item_info.h"

#include_next <windows.h>

#include "menu_item_info.h"

#include <shellapi.h>

#ifndef WINCEOEM_NAME
// The name that a call has in the device's DLL, where the C++ name has to differ because a desktop
// header already declares another function under it. 32-bit programs of the desktop are compiled but not
// linked.
#if defined(__i386__)
#define WINCEOEM_NAME(name)
#else
#define WINCEOEM_NAME(name) __asm__(name)
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

// Writes one formatted line to the debug output. Wide format after the Microsoft rules (%s is a wide
// string, %S a narrow one). May be called from any thread; one call is one write.
void WINAPIV NKDbgPrintfW(const WCHAR* format, ...);

// Events. On the device SetEvent, ResetEvent and PulseEvent are inline calls of EventModify.
#define EVENT_PULSE 1
#define EVENT_RESET 2
#define EVENT_SET 3
BOOL WINAPI EventModify(HANDLE event, DWORD function);
#define SetEvent(event) EventModify((event), EVENT_SET)
#define ResetEvent(event) EventModify((event), EVENT_RESET)
#define PulseEvent(event) EventModify((event), EVENT_PULSE)

// TRUE: every hardware key reaches the foreground window; FALSE: only those that are not the shell's own.
BOOL WINAPI AllKeys(BOOL allKeys);

// Copies a rectangle of a bitmap or device context, leaving out the pixels of one colour. Stretches when
// the sizes differ. `source` may be an HBITMAP or an HDC.
BOOL WINAPI TransparentImage(HDC destination, LONG x, LONG y, LONG width, LONG height, HANDLE source,
                             LONG sourceX, LONG sourceY, LONG sourceWidth, LONG sourceHeight,
                             COLORREF transparent);

// Starts the count anew that suspends an unattended device.
void WINAPI SystemIdleTimerReset(void);

// The path of a special folder (CSIDL_…) in the device's file system; MAX_PATH characters of room.
BOOL WINAPI CeSHGetSpecialFolderPath(HWND owner, LPWSTR path, int folder, BOOL create)
    WINCEOEM_NAME("SHGetSpecialFolderPath");
#undef SHGetSpecialFolderPath
#define SHGetSpecialFolderPath CeSHGetSpecialFolderPath

// Starts a program of the device or opens a document. FALSE, with the last error and hInstApp of at most 32,
// when there is none.
#undef ShellExecuteEx
BOOL WINAPI ShellExecuteEx(SHELLEXECUTEINFOW* info);

// GWL_USERDATA, GWL_WNDPROC and DWL_USER hold pointers: LONG on the device, LONG_PTR on a 64-bit host.
#if defined(_WIN64)
#define GWL_WNDPROC GWLP_WNDPROC
#define GWL_USERDATA GWLP_USERDATA
#define DWL_MSGRESULT DWLP_MSGRESULT
#define DWL_DLGPROC DWLP_DLGPROC
#define DWL_USER DWLP_USER
LONG_PTR WINAPI CeGetWindowLongW(HWND window, int index) WINCEOEM_NAME("GetWindowLongW");
LONG_PTR WINAPI CeSetWindowLongW(HWND window, int index, LONG_PTR value) WINCEOEM_NAME("SetWindowLongW");
#define GetWindowLongW CeGetWindowLongW
#define SetWindowLongW CeSetWindowLongW
#endif

// The C runtime's console output as the device has it: unbuffered.
#ifdef __cplusplus
}
#endif

// On the device a breakpoint is an instruction, not a call.
#define DebugBreak() __debugbreak()

// A CE program starts in WinMain with a wide command line.
#define WinMain wWinMain

#include "cedb.h"
#include "msgqueue.h"
#include "pm.h"
