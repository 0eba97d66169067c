// The device's <commdlg.h>: its file dialog's record ends where that of the desktop's first version did, and
// the dialog looks at its size, 76 bytes on the device.
#ifndef KORA_DEVICE_COMMDLG_H
#define KORA_DEVICE_COMMDLG_H

#define tagOFNW tagDesktopOFNW
#define OPENFILENAMEW DesktopOPENFILENAMEW
#define LPOPENFILENAMEW DesktopLPOPENFILENAMEW
#define GetOpenFileNameW DesktopGetOpenFileNameW
#define GetSaveFileNameW DesktopGetSaveFileNameW
#include_next <commdlg.h>
#undef tagOFNW
#undef OPENFILENAMEW
#undef LPOPENFILENAMEW
#undef GetOpenFileNameW
#undef GetSaveFileNameW

#ifdef __cplusplus
extern "C" {
#endif

typedef struct tagOFNW {
    DWORD lStructSize;
    HWND hwndOwner;
    HINSTANCE hInstance;
    LPCWSTR lpstrFilter;
    LPWSTR lpstrCustomFilter;
    DWORD nMaxCustFilter;
    DWORD nFilterIndex;
    LPWSTR lpstrFile;
    DWORD nMaxFile;
    LPWSTR lpstrFileTitle;
    DWORD nMaxFileTitle;
    LPCWSTR lpstrInitialDir;
    LPCWSTR lpstrTitle;
    DWORD Flags;
    WORD nFileOffset;
    WORD nFileExtension;
    LPCWSTR lpstrDefExt;
    LPARAM lCustData;
    LPOFNHOOKPROC lpfnHook;
    LPCWSTR lpTemplateName;
} OPENFILENAMEW, *LPOPENFILENAMEW;

// TRUE when a name was chosen; it is in lpstrFile, nMaxFile characters of room.
BOOL WINAPI GetOpenFileNameW(LPOPENFILENAMEW request);
BOOL WINAPI GetSaveFileNameW(LPOPENFILENAMEW request);

#ifdef __cplusplus
}
#endif

#endif
