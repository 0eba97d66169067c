// The registry helpers of Windows Mobile (they belong to the shell library): one value read or written in
// one call, and changes reported as window messages.
#pragma once

#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

// Reads a DWORD value of a key below `root`. S_OK; a failure code, and *data as it was, when the key or the
// value is missing or of another type; E_INVALIDARG for a null root or data. Any thread.
HRESULT WINAPI RegistryGetDWORD(HKEY root, LPCWSTR key, LPCWSTR value, DWORD* data);
// Writes a DWORD value; the key is created when it is missing.
HRESULT WINAPI RegistrySetDWORD(HKEY root, LPCWSTR key, LPCWSTR value, DWORD data);
// Reads a string value into `data`, `count` characters long with its terminator. A longer string fails with
// HRESULT_FROM_WIN32(ERROR_MORE_DATA) and leaves `data` as it was.
HRESULT WINAPI RegistryGetString(HKEY root, LPCWSTR key, LPCWSTR value, LPWSTR data, UINT count);
HRESULT WINAPI RegistrySetString(HKEY root, LPCWSTR key, LPCWSTR value, LPCWSTR data);

DECLARE_HANDLE(HREGNOTIFY);

typedef enum {
    REG_CT_EQUAL,
    REG_CT_NOT_EQUAL,
    REG_CT_GREATER,
    REG_CT_GREATER_OR_EQUAL,
    REG_CT_LESS,
    REG_CT_LESS_OR_EQUAL,
    REG_CT_CONTAINS,
    REG_CT_STARTS_WITH,
    REG_CT_ENDS_WITH,
    REG_CT_ANYCHANGE
} REGISTRYCOMPARISONTYPE;

typedef struct {
    REGISTRYCOMPARISONTYPE ctComparisonType;
    DWORD dwMask;
    union {
        LPCWSTR psz;
        DWORD dw;
    } TargetValue;
} NOTIFICATIONCONDITION;

// Reports changes of one value as a message: wParam = the new value of a DWORD (0 when the value is gone),
// lParam = `userData`. A null condition reports every change.
HRESULT WINAPI RegistryNotifyWindow(HKEY root, LPCWSTR key, LPCWSTR value, HWND window, UINT message,
                                    DWORD userData, NOTIFICATIONCONDITION* condition, HREGNOTIFY* notify);
HRESULT WINAPI RegistryCloseNotification(HREGNOTIFY notify);

#ifdef __cplusplus
}
#endif
