// The device's registry, a part of the user's own. A key is given as on the device: with or without a
// backslash before its path, and one of the roots wherever a key is expected.
#include <cstddef>
#include <cwchar>
#include <string>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/handset_state.h"

namespace {

using coredll::CCallGuard;

// Where a key of the device lies on the host.
struct HostKey {
    HKEY key;
    std::wstring path;
};

HostKey Locate(HKEY key, const wchar_t* subkey) {
    std::wstring path = subkey != nullptr ? subkey : L"";
    path.erase(0, path.find_first_not_of(L'\\'));
    const std::wstring root = handset::DeviceRegistryRootPath(key);
    if (root.empty()) return {key, path};
    return {HKEY_CURRENT_USER, path.empty() ? root : root + L"\\" + path};
}

// The fault "registry-rights": the power manager's keys are not to be written.
bool Refused(const HostKey& host, REGSAM access) {
    static constexpr wchar_t kPowerKeys[] = L"\\HKLM\\System\\CurrentControlSet\\Control\\Power";
    constexpr std::size_t kLength = std::size(kPowerKeys) - 1;
    if ((access & KEY_SET_VALUE) == 0) return false;
    const std::size_t place = host.path.find(L"\\HKLM\\");
    return place != std::wstring::npos && _wcsnicmp(host.path.c_str() + place, kPowerKeys, kLength) == 0 &&
           handset::FaultInjected(L"registry-rights");
}

bool IsRoot(HKEY key) {
    return !handset::DeviceRegistryRootPath(key).empty();
}

LONG MakeRoot(HKEY root, HKEY* made) {
    return RegCreateKeyExW(HKEY_CURRENT_USER, handset::DeviceRegistryRootPath(root).c_str(), 0, nullptr, 0,
                           KEY_ALL_ACCESS, nullptr, made, nullptr);
}

// A key that calls without a path can work on: an open one as it is, a root opened for the moment.
class CWorkingKey {
  public:
    explicit CWorkingKey(HKEY key) : key_(key) {
        if (!IsRoot(key)) return;
        status_ = MakeRoot(key, handset::Put(opened_));
        key_ = opened_.get();
    }

    HKEY get() const { return key_; }
    LONG status() const { return status_; }

  private:
    HKEY key_;
    handset::OwnedKey opened_;
    LONG status_ = ERROR_SUCCESS;
};

}  // namespace

// The device has no access rights: every key is opened for everything.
COREDLL_EXPORT LONG WINAPI DeviceRegOpenKeyExW(HKEY key, const wchar_t* subkey, DWORD options, REGSAM access,
                                               HKEY* result) try {
    const CCallGuard guard;
    if (result == nullptr) return ERROR_INVALID_PARAMETER;
    if (IsRoot(key) && Locate(key, subkey).path == Locate(key, nullptr).path) return MakeRoot(key, result);
    const HostKey host = Locate(key, subkey);
    if (Refused(host, access)) return ERROR_ACCESS_DENIED;
    return RegOpenKeyExW(host.key, host.path.c_str(), options, KEY_ALL_ACCESS, result);
} catch (...) {
    return static_cast<LONG>(handset::EdgeError());
}

COREDLL_EXPORT LONG WINAPI DeviceRegCreateKeyExW(HKEY key, const wchar_t* subkey, DWORD /*reserved*/,
                                                 wchar_t* keyClass, DWORD /*options*/, REGSAM access,
                                                 SECURITY_ATTRIBUTES* /*security*/, HKEY* result,
                                                 DWORD* disposition) try {
    const CCallGuard guard;
    if (result == nullptr) return ERROR_INVALID_PARAMETER;
    const HostKey host = Locate(key, subkey);
    if (Refused(host, access)) return ERROR_ACCESS_DENIED;
    return RegCreateKeyExW(host.key, host.path.c_str(), 0, keyClass, 0, KEY_ALL_ACCESS, nullptr, result,
                           disposition);
} catch (...) {
    return static_cast<LONG>(handset::EdgeError());
}

// As on the device, the keys below go with it.
COREDLL_EXPORT LONG WINAPI DeviceRegDeleteKeyW(HKEY key, const wchar_t* subkey) try {
    const CCallGuard guard;
    const HostKey host = Locate(key, subkey);
    if (subkey == nullptr || host.path.empty() || host.path == Locate(key, nullptr).path) {
        return ERROR_INVALID_PARAMETER;
    }
    return RegDeleteTreeW(host.key, host.path.c_str());
} catch (...) {
    return static_cast<LONG>(handset::EdgeError());
}

COREDLL_EXPORT LONG WINAPI DeviceRegCloseKey(HKEY key) try {
    const CCallGuard guard;
    return IsRoot(key) ? ERROR_SUCCESS : RegCloseKey(key);
} catch (...) {
    return static_cast<LONG>(handset::EdgeError());
}

// ON_KEY(RegFlushKey, (HKEY key), ()): a call whose first argument is a key, root or open.
#define ON_KEY(name, parameters, ...)                                   \
    COREDLL_EXPORT LONG WINAPI Device##name parameters try {            \
        const CCallGuard guard;                                         \
        const CWorkingKey working(key);                                 \
        if (working.status() != ERROR_SUCCESS) return working.status(); \
        return name(working.get() __VA_OPT__(, ) __VA_ARGS__);          \
    } catch (...) {                                                     \
        return static_cast<LONG>(handset::EdgeError());                 \
    }

ON_KEY(RegDeleteValueW, (HKEY key, const wchar_t* name), name)
ON_KEY(RegEnumKeyExW,
       (HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, wchar_t* keyClass,
        DWORD* classLength, FILETIME* written),
       index, name, nameLength, reserved, keyClass, classLength, written)
ON_KEY(RegEnumValueW,
       (HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type, BYTE* data,
        DWORD* size),
       index, name, nameLength, reserved, type, data, size)
ON_KEY(RegFlushKey, (HKEY key))
ON_KEY(RegQueryInfoKeyW,
       (HKEY key, wchar_t* keyClass, DWORD* classLength, DWORD* reserved, DWORD* subkeys,
        DWORD* longestSubkey, DWORD* longestClass, DWORD* values, DWORD* longestName, DWORD* longestData,
        DWORD* security, FILETIME* written),
       keyClass, classLength, reserved, subkeys, longestSubkey, longestClass, values, longestName,
       longestData, security, written)
ON_KEY(RegQueryValueExW,
       (HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size), name, reserved,
       type, data, size)
ON_KEY(RegSetValueExW,
       (HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size), name,
       reserved, type, data, size)
