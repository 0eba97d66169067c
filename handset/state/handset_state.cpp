#include "handset/state/handset_state.h"

#include <cwchar>
#include <cwctype>

#include "handset/state/stored_value.h"

namespace handset {
namespace {

constexpr wchar_t kDefaultStateKey[] = L"Software\\Kora Handset";
constexpr wchar_t kStorageCard[] = L"\\Storage Card";
constexpr std::size_t kStorageCardLength = std::size(kStorageCard) - 1;

std::optional<std::wstring> FromEnvironment(const wchar_t* name) {
    std::wstring variable = L"KORA_";
    for (const wchar_t* c = name; *c != 0; ++c) variable += static_cast<wchar_t>(std::towupper(*c));
    const DWORD size = GetEnvironmentVariableW(variable.c_str(), nullptr, 0);
    if (size == 0) return std::nullopt;
    std::wstring value(size, L'\0');
    value.resize(GetEnvironmentVariableW(variable.c_str(), value.data(), size));
    return value;
}

std::wstring TextOf(const StoredValue& value) {
    const std::wstring text(reinterpret_cast<const wchar_t*>(value.data.data()),
                            value.data.size() / sizeof(wchar_t));
    return text.substr(0, text.find(L'\0'));
}

std::optional<std::uint64_t> Number(const wchar_t* name) {
    if (const auto text = FromEnvironment(name)) return std::wcstoull(text->c_str(), nullptr, 0);
    const auto stored = ReadStoredValue(StateKeyPath(), name);
    if (!stored) return std::nullopt;
    if (stored->type == REG_SZ) return std::wcstoull(TextOf(*stored).c_str(), nullptr, 0);
    std::uint64_t value = 0;
    for (std::size_t i = stored->data.size(); i-- > 0;) value = value << 8 | stored->data[i];
    return value;
}

bool Write(const wchar_t* name, DWORD type, const void* data, std::size_t size) {
    return RegSetKeyValueW(HKEY_CURRENT_USER, StateKeyPath().c_str(), name, type, data,
                           static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

}  // namespace

std::wstring StateKeyPath() {
    return FromEnvironment(L"StateKey").value_or(kDefaultStateKey);
}

std::wstring StateObjectName(const wchar_t* name) {
    std::wstring text = StateKeyPath() + L"/" + name;
    // The only character that such a name may not hold.
    for (wchar_t& c : text) c = c == L'\\' ? L'/' : c;
    return L"Local\\" + text;
}

std::uint32_t StateDword(const wchar_t* name, std::uint32_t fallback) {
    return static_cast<std::uint32_t>(Number(name).value_or(fallback));
}

std::optional<std::uint64_t> StateQword(const wchar_t* name) {
    return Number(name);
}

std::wstring StateString(const wchar_t* name, const std::wstring& fallback) {
    if (const auto text = FromEnvironment(name)) return *text;
    const auto stored = ReadStoredValue(StateKeyPath(), name);
    return stored && stored->type == REG_SZ ? TextOf(*stored) : fallback;
}

bool SetStateDword(const wchar_t* name, std::uint32_t value) {
    return Write(name, REG_DWORD, &value, sizeof value);
}

bool SetStateQword(const wchar_t* name, std::uint64_t value) {
    return Write(name, REG_QWORD, &value, sizeof value);
}

bool SetStateString(const wchar_t* name, const std::wstring& value) {
    return Write(name, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t));
}

bool DeleteStateValue(const wchar_t* name) {
    return RegDeleteKeyValueW(HKEY_CURRENT_USER, StateKeyPath().c_str(), name) == ERROR_SUCCESS;
}

std::wstring InjectedFaults() {
    return StateString(L"Fault", L"");
}

bool FaultIn(const std::wstring& faults, const wchar_t* fault) {
    return (L" " + faults + L" ").find(L" " + std::wstring(fault) + L" ") != std::wstring::npos;
}

bool FaultInjected(const wchar_t* fault) {
    const std::wstring faults = InjectedFaults();
    return !faults.empty() && FaultIn(faults, fault);
}

std::wstring DeviceRoot() {
    std::wstring root = StateString(L"DeviceRoot", L"");
    while (!root.empty() && (root.back() == L'\\' || root.back() == L'/')) root.pop_back();
    return root;
}

std::wstring HostPath(const wchar_t* devicePath) {
    if (devicePath == nullptr) return L"";
    const bool onDevice = devicePath[0] == L'\\' && devicePath[1] != L'\\';
    return onDevice ? DeviceRoot() + devicePath : devicePath;
}

bool IsOnStorageCard(const wchar_t* devicePath) {
    if (devicePath == nullptr || _wcsnicmp(devicePath, kStorageCard, kStorageCardLength) != 0) return false;
    const wchar_t next = devicePath[kStorageCardLength];
    return next == L'\0' || next == L'\\';
}

bool StorageCardPresent() {
    return StateDword(L"StorageCard", 1) != 0;
}

std::wstring DeviceRegistryRootPath(HKEY root) {
    struct Root {
        HKEY key;
        const wchar_t* name;
    };
    const Root kRoots[] = {
        {HKEY_CLASSES_ROOT, L"HKCR"},
        {HKEY_LOCAL_MACHINE, L"HKLM"},
        {HKEY_CURRENT_USER, L"HKCU"},
        {HKEY_USERS, L"HKU"},
    };
    for (const Root& row : kRoots) {
        if (row.key == root) return StateKeyPath() + L"\\Registry\\" + row.name;
    }
    return L"";
}

}  // namespace handset
