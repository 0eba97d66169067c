// The shell library of Windows Mobile (AYGSHELL.dll): dialogs, soft-key menu bar, activation, images.
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

// --- Dialogs ---------------------------------------------------------------------------------------------

#define SHIDIM_FLAGS 0x0001
#define SHIDIF_DONEBUTTON 0x0001
#define SHIDIF_SIZEDLG 0x0002
#define SHIDIF_SIZEDLGFULLSCREEN 0x0004
#define SHIDIF_SIPDOWN 0x0008
#define SHIDIF_FULLSCREENNOMENUBAR 0x0010
#define SHIDIF_EMPTYMENU 0x0020
#define SHIDIF_WANTSCROLLBAR 0x0040

typedef struct tagSHINITDLGINFO {
    DWORD dwMask;  // SHIDIM_FLAGS
    HWND hDlg;
    DWORD dwFlags;  // SHIDIF_…
} SHINITDLGINFO, *PSHINITDLGINFO;

// Sizes and places a dialog in its WM_INITDIALOG. FALSE for a null record or window.
BOOL WINAPI SHInitDialog(PSHINITDLGINFO info);

// --- Soft-key menu bar -----------------------------------------------------------------------------------

#define SHCMBF_EMPTYBAR 0x0001
#define SHCMBF_HIDDEN 0x0002
#define SHCMBF_HIDESIPBUTTON 0x0004
#define SHCMBF_COLORBK 0x0008
#define SHCMBF_HMENU 0x0010

#define NOMENU 0xFFFF
#define IDS_SHNEW 0xFFFE

typedef struct tagSHMENUBARINFO {
    DWORD cbSize;
    HWND hwndParent;
    DWORD dwFlags;    // SHCMBF_…
    UINT nToolBarId;  // RCDATA menu bar resource, or with SHCMBF_HMENU a menu resource
    HINSTANCE hInstRes;
    int nBmpId;
    int cBmpImages;
    HWND hwndMB;  // out: the menu bar
    COLORREF clrBk;
} SHMENUBARINFO, *PSHMENUBARINFO;

// Creates the bar with the two soft keys at the foot of its parent. FALSE (hwndMB NULL) for a wrong
// record or a resource that is not there. TB_… messages sent to the bar reach its toolbar.
BOOL WINAPI SHCreateMenuBar(PSHMENUBARINFO info);
HWND WINAPI SHFindMenuBar(HWND parent);
// One-time initialisation of the shell's extra controls.
BOOL WINAPI SHInitExtraControls(void);

// --- Activation and settings changes ---------------------------------------------------------------------

typedef struct {
    DWORD cbSize;
    HWND hwndLastFocus;
    UINT fSipUp : 1;
    UINT fSipOnDeactivation : 1;
    UINT fActive : 1;
    UINT fReserved : 29;
} SHACTIVATEINFO, *PSHACTIVATEINFO;

// Called first on WM_ACTIVATE: keeps the focus across deactivation. Always TRUE for a valid record.
BOOL WINAPI SHHandleWMActivate(HWND window, WPARAM wParam, LPARAM lParam, SHACTIVATEINFO* info, DWORD flags);
// Called on WM_SETTINGCHANGE: fits the window to the screen again.
BOOL WINAPI SHHandleWMSettingChange(HWND window, WPARAM wParam, LPARAM lParam, SHACTIVATEINFO* info);

// --- Programs at a time ----------------------------------------------------------------------------------

#define RUNAPP_ONCE 0
#define RUNAPP_EVERY_DAY 1
#define RUNAPP_EVERY_WEEK 2

// Has the system start `application` (a path of the device) with `commandLine` at a local time, and again
// every day or every week at that time of day until StopAppAtTimeEx. The booking's name, at least 20
// characters long and never given twice, goes to `name`, which has room for `count` characters; it is empty
// on failure. S_OK; E_INVALIDARG for a null argument (the command line may be null), a time that does not
// exist, an unknown repetition; HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER); E_FAIL when it cannot be kept.
// Any thread.
HRESULT WINAPI RunAppAtTimeEx(LPCWSTR application, LPCWSTR commandLine, SYSTEMTIME* time, DWORD repeat,
                              LPWSTR name, DWORD count);
// S_OK; E_INVALIDARG for a null name; E_FAIL for one that is not booked.
HRESULT WINAPI StopAppAtTimeEx(LPCWSTR name);

// --- Images ----------------------------------------------------------------------------------------------

// Loads an image of a module by the number of its resource, whose type is GIF; the image itself may be of any
// form that the system knows (BMP, GIF, JPEG). The caller deletes it. NULL when there is none, or none of
// that type.
HBITMAP WINAPI SHLoadImageResource(HINSTANCE module, UINT id);

#ifdef __cplusplus
}
#endif
