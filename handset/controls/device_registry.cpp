// The device's registry, over the host's calls.
#include "handset/controls/device_registry.h"

#include "handset/base/owned.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

struct RootName {
    const wchar_t* name;
    HKEY root;
};
// clang-format off
const RootName kRootNames[] = {
    {L"HKCR", HKEY_CLASSES_ROOT},  {L"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},
    {L"HKLM", HKEY_LOCAL_MACHINE}, {L"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE},
    {L"HKCU", HKEY_CURRENT_USER},  {L"HKEY_CURRENT_USER", HKEY_CURRENT_USER},
    {L"HKU", HKEY_USERS},          {L"HKEY_USERS", HKEY_USERS},
};
// clang-format on

handset::OwnedKey Open(const std::wstring& deviceKey, REGSAM access) {
    const auto path = HostKeyPath(deviceKey);
    handset::OwnedKey key;
    if (path) RegOpenKeyExW(HKEY_CURRENT_USER, path->c_str(), 0, access, handset::Put(key));
    return key;
}

constexpr DWORD kNameCapacity = 16384;  // a value's name has at most 16383 characters

}  // namespace

std::optional<std::wstring> HostKeyPath(const std::wstring& deviceKey) {
    const std::size_t first = deviceKey.find_first_not_of(L'\\');
    if (first == std::wstring::npos) return std::nullopt;
    std::wstring key = deviceKey.substr(first);
    while (!key.empty() && key.back() == L'\\') key.pop_back();
    const std::size_t end = key.find(L'\\');
    const std::wstring rootName = key.substr(0, end);
    for (const RootName& row : kRootNames) {
        if (_wcsicmp(row.name, rootName.c_str()) != 0) continue;
        const std::wstring rest = end == std::wstring::npos ? L"" : key.substr(end);
        return handset::DeviceRegistryRootPath(row.root) + rest;
    }
    return std::nullopt;
}

bool DeviceKeyExists(const std::wstring& key) {
    return Open(key, KEY_READ) != nullptr;
}

bool CreateDeviceKey(const std::wstring& key) {
    const auto path = HostKeyPath(key);
    handset::OwnedKey created;
    return path && RegCreateKeyExW(HKEY_CURRENT_USER, path->c_str(), 0, nullptr, 0, KEY_READ, nullptr,
                                   handset::Put(created), nullptr) == ERROR_SUCCESS;
}

std::optional<DeviceValue> GetDeviceValue(const std::wstring& key, const std::wstring& value) {
    const auto path = HostKeyPath(key);
    return path ? handset::ReadRegistryValue(HKEY_CURRENT_USER, *path, value.c_str()) : std::nullopt;
}

bool SetDeviceValue(const std::wstring& key, const std::wstring& value, const DeviceValue& data) {
    const auto path = HostKeyPath(key);
    return path && RegSetKeyValueW(HKEY_CURRENT_USER, path->c_str(), value.c_str(), data.type,
                                   data.data.data(), static_cast<DWORD>(data.data.size())) == ERROR_SUCCESS;
}

bool DeleteDeviceValue(const std::wstring& key, const std::wstring& value) {
    const handset::OwnedKey open = Open(key, KEY_SET_VALUE);
    return open && RegDeleteValueW(open.get(), value.c_str()) == ERROR_SUCCESS;
}

bool DeleteDeviceKey(const std::wstring& key) {
    const auto path = HostKeyPath(key);
    return path && RegDeleteTreeW(HKEY_CURRENT_USER, path->c_str()) == ERROR_SUCCESS;
}

std::vector<std::wstring> DeviceSubkeys(const std::wstring& key) {
    const handset::OwnedKey open = Open(key, KEY_ENUMERATE_SUB_KEYS);
    std::vector<std::wstring> names;
    wchar_t name[256];
    DWORD length = std::size(name);
    while (open && RegEnumKeyExW(open.get(), static_cast<DWORD>(names.size()), name, &length, nullptr,
                                 nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
        names.emplace_back(name, length);
        length = std::size(name);
    }
    return names;
}

std::vector<std::wstring> DeviceValueNames(const std::wstring& key) {
    const handset::OwnedKey open = Open(key, KEY_QUERY_VALUE);
    std::vector<std::wstring> names;
    std::wstring name(kNameCapacity, L'\0');
    DWORD length = kNameCapacity;
    while (open && RegEnumValueW(open.get(), static_cast<DWORD>(names.size()), name.data(), &length, nullptr,
                                 nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
        names.push_back(name.substr(0, length));
        length = kNameCapacity;
    }
    return names;
}

DWORD DeviceDword(const std::wstring& key, const std::wstring& value, DWORD fallback) {
    const auto found = GetDeviceValue(key, value);
    return found ? handset::AsDword(*found).value_or(fallback) : fallback;
}

std::wstring DeviceString(const std::wstring& key, const std::wstring& value, const std::wstring& fallback) {
    const auto found = GetDeviceValue(key, value);
    return found ? handset::AsText(*found).value_or(fallback) : fallback;
}

bool SetDeviceDword(const std::wstring& key, const std::wstring& value, DWORD data) {
    return SetDeviceValue(key, value, handset::DwordValue(data));
}

bool SetDeviceString(const std::wstring& key, const std::wstring& value, const std::wstring& data) {
    return SetDeviceValue(key, value, handset::TextValue(data));
}

}  // namespace panel
