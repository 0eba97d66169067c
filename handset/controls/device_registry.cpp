// The device's registry, over the host's calls.
#include "handset/controls/device_registry.h"

#include <algorithm>
#include <cstring>

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

// An open key, closed at the end of its scope.
class OpenKey {
  public:
    OpenKey(const std::wstring& deviceKey, REGSAM access) {
        const auto path = HostKeyPath(deviceKey);
        if (!path || RegOpenKeyExW(HKEY_CURRENT_USER, path->c_str(), 0, access, &key_) != ERROR_SUCCESS) {
            key_ = nullptr;
        }
    }
    ~OpenKey() {
        if (key_ != nullptr) RegCloseKey(key_);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    [[nodiscard]] HKEY get() const { return key_; }

  private:
    HKEY key_ = nullptr;
};

constexpr DWORD kNameCapacity = 16384;  // a value's name has at most 16383 characters

DeviceValue StringValue(const std::wstring& text) {
    DeviceValue value{REG_SZ, std::vector<BYTE>((text.size() + 1) * sizeof(wchar_t))};
    std::memcpy(value.data.data(), text.c_str(), value.data.size());
    return value;
}

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
    return OpenKey(key, KEY_READ).get() != nullptr;
}

bool CreateDeviceKey(const std::wstring& key) {
    const auto path = HostKeyPath(key);
    HKEY created = nullptr;
    if (!path || RegCreateKeyExW(HKEY_CURRENT_USER, path->c_str(), 0, nullptr, 0, KEY_READ, nullptr, &created,
                                 nullptr) != ERROR_SUCCESS) {
        return false;
    }
    RegCloseKey(created);
    return true;
}

std::optional<DeviceValue> GetDeviceValue(const std::wstring& key, const std::wstring& value) {
    const OpenKey open(key, KEY_QUERY_VALUE);
    if (open.get() == nullptr) return std::nullopt;
    DeviceValue found{};
    found.data.resize(256);
    for (;;) {
        auto size = static_cast<DWORD>(found.data.size());
        const LSTATUS status =
            RegQueryValueExW(open.get(), value.c_str(), nullptr, &found.type, found.data.data(), &size);
        // Somebody else may make it longer meanwhile.
        if (status == ERROR_MORE_DATA) {
            found.data.resize(std::max<std::size_t>(size, 2 * found.data.size()));
            continue;
        }
        if (status != ERROR_SUCCESS) return std::nullopt;
        found.data.resize(size);
        return found;
    }
}

bool SetDeviceValue(const std::wstring& key, const std::wstring& value, const DeviceValue& data) {
    const auto path = HostKeyPath(key);
    return path && RegSetKeyValueW(HKEY_CURRENT_USER, path->c_str(), value.c_str(), data.type,
                                   data.data.data(), static_cast<DWORD>(data.data.size())) == ERROR_SUCCESS;
}

bool DeleteDeviceValue(const std::wstring& key, const std::wstring& value) {
    const OpenKey open(key, KEY_SET_VALUE);
    return open.get() != nullptr && RegDeleteValueW(open.get(), value.c_str()) == ERROR_SUCCESS;
}

bool DeleteDeviceKey(const std::wstring& key) {
    const auto path = HostKeyPath(key);
    return path && RegDeleteTreeW(HKEY_CURRENT_USER, path->c_str()) == ERROR_SUCCESS;
}

std::vector<std::wstring> DeviceSubkeys(const std::wstring& key) {
    const OpenKey open(key, KEY_ENUMERATE_SUB_KEYS);
    std::vector<std::wstring> names;
    wchar_t name[256];
    DWORD length = std::size(name);
    while (open.get() != nullptr && RegEnumKeyExW(open.get(), static_cast<DWORD>(names.size()), name, &length,
                                                  nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) {
        names.emplace_back(name, length);
        length = std::size(name);
    }
    return names;
}

std::vector<std::wstring> DeviceValueNames(const std::wstring& key) {
    const OpenKey open(key, KEY_QUERY_VALUE);
    std::vector<std::wstring> names;
    std::wstring name(kNameCapacity, L'\0');
    DWORD length = kNameCapacity;
    while (open.get() != nullptr &&
           RegEnumValueW(open.get(), static_cast<DWORD>(names.size()), name.data(), &length, nullptr, nullptr,
                         nullptr, nullptr) == ERROR_SUCCESS) {
        names.push_back(name.substr(0, length));
        length = kNameCapacity;
    }
    return names;
}

DWORD DeviceDword(const std::wstring& key, const std::wstring& value, DWORD fallback) {
    const auto found = GetDeviceValue(key, value);
    DWORD number = 0;
    if (!found || found->type != REG_DWORD || found->data.size() != sizeof number) return fallback;
    std::memcpy(&number, found->data.data(), sizeof number);
    return number;
}

std::wstring DeviceString(const std::wstring& key, const std::wstring& value, const std::wstring& fallback) {
    const auto found = GetDeviceValue(key, value);
    if (!found || found->type != REG_SZ) return fallback;
    const std::wstring text(reinterpret_cast<const wchar_t*>(found->data.data()),
                            found->data.size() / sizeof(wchar_t));
    return text.substr(0, text.find(L'\0'));
}

bool SetDeviceDword(const std::wstring& key, const std::wstring& value, DWORD data) {
    DeviceValue number{REG_DWORD, std::vector<BYTE>(sizeof data)};
    std::memcpy(number.data.data(), &data, sizeof data);
    return SetDeviceValue(key, value, number);
}

bool SetDeviceString(const std::wstring& key, const std::wstring& value, const std::wstring& data) {
    return SetDeviceValue(key, value, StringValue(data));
}

}  // namespace panel
