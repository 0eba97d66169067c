// Kernel calls of the desktop that worker threads make.
#include "handset/coredll/kernel/call_guard.h"

// clang-format off
GUARDED(HANDLE, CreateEventW, (SECURITY_ATTRIBUTES* security, BOOL manualReset, BOOL set, const wchar_t* name), (security, manualReset, set, name), Plain)
GUARDED(HANDLE, CreateMutexW, (SECURITY_ATTRIBUTES* security, BOOL owned, const wchar_t* name), (security, owned, name), Plain)
GUARDED(HLOCAL, LocalAlloc, (UINT flags, SIZE_T size), (flags, size), Plain)
GUARDED(HLOCAL, LocalFree, (HLOCAL memory), (memory), Plain)
GUARDED(HLOCAL, LocalReAlloc, (HLOCAL memory, SIZE_T size, UINT flags), (memory, size, flags), Plain)
GUARDED(HANDLE, OpenEventW, (DWORD access, BOOL inherit, const wchar_t* name), (access, inherit, name), Plain)
GUARDED(BOOL, ReadFile, (HANDLE file, void* data, DWORD size, DWORD* done, OVERLAPPED* overlapped), (file, data, size, done, overlapped), Waits)
GUARDED(BOOL, ReleaseMutex, (HANDLE mutex), (mutex), Plain)
GUARDED(BOOL, WriteFile, (HANDLE file, const void* data, DWORD size, DWORD* done, OVERLAPPED* overlapped), (file, data, size, done, overlapped), Waits)
// clang-format on
