// Files and folders of the device's file system.
#include <string>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/handset_state.h"

using coredll::CCallGuard;
using handset::CDevicePath;
using handset::OnDevice;

namespace {

// What the device adds to the attributes of a folder in which a storage card is mounted.
DWORD MountedAttributes(const CDevicePath& path, DWORD attributes) {
    const bool mount = path.onStorageCard() && path.device().find(L'\\', 1) == std::wstring::npos;
    if (attributes == INVALID_FILE_ATTRIBUTES || !mount) return attributes;
    return attributes | FILE_ATTRIBUTE_TEMPORARY;
}

}  // namespace

COREDLL_EXPORT HANDLE WINAPI DeviceCreateFileW(const wchar_t* path, DWORD access, DWORD share,
                                               SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                                               HANDLE pattern) try {
    const CCallGuard guard;
    const CDevicePath file = OnDevice(path);
    if (!file) return INVALID_HANDLE_VALUE;
    return CreateFileW(file.host(), access, share, security, disposition, flags, pattern);
} catch (...) {
    return handset::EdgeAnswer<HANDLE>(INVALID_HANDLE_VALUE);
}

COREDLL_EXPORT BOOL WINAPI DeviceCopyFileW(const wchar_t* from, const wchar_t* to, BOOL failIfExists) try {
    const CCallGuard guard;
    const CDevicePath source = OnDevice(from);
    const CDevicePath target = OnDevice(to);
    return source && target && CopyFileW(source.host(), target.host(), failIfExists);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI DeviceMoveFileW(const wchar_t* from, const wchar_t* to) try {
    const CCallGuard guard;
    const CDevicePath source = OnDevice(from);
    const CDevicePath target = OnDevice(to);
    return source && target && MoveFileW(source.host(), target.host());
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI DeviceCreateDirectoryW(const wchar_t* path, SECURITY_ATTRIBUTES* security) try {
    const CCallGuard guard;
    const CDevicePath folder = OnDevice(path);
    return folder && CreateDirectoryW(folder.host(), security);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT DWORD WINAPI DeviceGetFileAttributesW(const wchar_t* path) try {
    const CCallGuard guard;
    const CDevicePath file = OnDevice(path);
    if (!file) return INVALID_FILE_ATTRIBUTES;
    return MountedAttributes(file, GetFileAttributesW(file.host()));
} catch (...) {
    return handset::EdgeAnswer<DWORD>(INVALID_FILE_ATTRIBUTES);
}

COREDLL_EXPORT BOOL WINAPI DeviceGetFileAttributesExW(const wchar_t* path, GET_FILEEX_INFO_LEVELS level,
                                                      void* information) try {
    const CCallGuard guard;
    const CDevicePath file = OnDevice(path);
    if (!file || !GetFileAttributesExW(file.host(), level, information)) return FALSE;
    auto* data = static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(information);
    data->dwFileAttributes = MountedAttributes(file, data->dwFileAttributes);
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

// A call whose first argument is a path and whose result is FALSE for one that is not there.
#define ON_PATH(name, parameters, ...)                               \
    COREDLL_EXPORT BOOL WINAPI Device##name parameters try {         \
        const CCallGuard guard;                                      \
        const CDevicePath file = OnDevice(path);                     \
        return file && name(file.host() __VA_OPT__(, ) __VA_ARGS__); \
    } catch (...) {                                                  \
        return handset::EdgeAnswer(FALSE);                           \
    }

ON_PATH(DeleteFileW, (const wchar_t* path))
ON_PATH(RemoveDirectoryW, (const wchar_t* path))
ON_PATH(SetFileAttributesW, (const wchar_t* path, DWORD attributes), attributes)

COREDLL_EXPORT HANDLE WINAPI DeviceFindFirstChangeNotificationW(const wchar_t* path, BOOL subtree,
                                                                DWORD filter) try {
    const CCallGuard guard;
    const CDevicePath folder = OnDevice(path);
    return folder ? FindFirstChangeNotificationW(folder.host(), subtree, filter) : INVALID_HANDLE_VALUE;
} catch (...) {
    return handset::EdgeAnswer<HANDLE>(INVALID_HANDLE_VALUE);
}
