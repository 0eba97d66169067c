// How every dialog of the radio is run.
#pragma once

#include <windows.h>

#include <aygshell.h>

// Runs the dialog template modally and gives the dialog's result, or -1 when the template is not there.
INT_PTR RunDialog(HWND owner, UINT templateId, DLGPROC procedure, LPARAM parameter = 0);

// SHInitDialog's flags for the radio's dialogs: with a Done button, filling the screen, without the input
// panel and with an empty menu; and the same with the input panel left as it is.
inline constexpr DWORD kFullScreenDialog =
    SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN | SHIDIF_SIPDOWN | SHIDIF_EMPTYMENU;
inline constexpr DWORD kFullScreenInputDialog =
    SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN | SHIDIF_EMPTYMENU;
static_assert(kFullScreenDialog == 0x2D && kFullScreenInputDialog == 0x25);

// What WM_CLOSE ends most dialogs with.
inline constexpr INT_PTR kDialogClosed = 16;

// Registers control classes (ICC_…) before the first window or dialog that uses them: the platform knows none
// by itself, and a dialog with an unknown one fails as a whole.
void RegisterControls(DWORD classes);

// WM_INITDIALOG: sizes and places the dialog.
void SetUpDialog(HWND dialog, DWORD flags);

// WM_INITDIALOG: the dialog's soft keys (flags SHCMBF_…; menu 0 = none). False when the shell refuses.
bool CreateDialogBar(HWND dialog, UINT menuId, DWORD flags);
