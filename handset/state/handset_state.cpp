#include "handset/state/handset_state.h"

#include <cwctype>
#include <iterator>

#include "handset/base/number_text.h"
#include "handset/base/owned.h"
#include "handset/base/rows.h"
#include "handset/state/stored_value.h"

namespace handset {
namespace {

constexpr wchar_t kDefaultStateKey[] = L"Software\\Kora Handset";

std::optional<std::wstring> FromEnvironment(const wchar_t* name) {
    std::wstring variable = L"KORA_";
    for (const wchar_t* c = name; *c != 0; ++c) variable += static_cast<wchar_t>(std::towupper(*c));
    // One question is enough for nearly all; there is one with every value that is asked for. An empty text
    // is an answer, too.
    const CKeptLastError kept;
    SetLastError(ERROR_SUCCESS);
    wchar_t usual[128];
    const DWORD size = GetEnvironmentVariableW(variable.c_str(), usual, std::size(usual));
    if (size == 0 && GetLastError() != ERROR_SUCCESS) return std::nullopt;
    if (size < std::size(usual)) return std::wstring(usual, size);
    std::wstring value(size, L'\0');
    value.resize(GetEnvironmentVariableW(variable.c_str(), value.data(), size));
    return value;
}

using ReadsValue = std::optional<RegistryValue>(const wchar_t* name);

std::optional<std::uint64_t> Number(const wchar_t* name, ReadsValue& read) {
    if (const auto text = FromEnvironment(name)) return ParseNumber(*text);
    const auto stored = read(name);
    if (!stored) return std::nullopt;
    const auto text = AsText(*stored);
    return text ? ParseNumber(*text) : AsNumber(*stored);
}

std::uint32_t Dword(const wchar_t* name, std::uint32_t fallback, ReadsValue& read) {
    const auto number = Number(name, read);
    return number && *number <= UINT32_MAX ? static_cast<std::uint32_t>(*number) : fallback;
}

bool Write(const wchar_t* name, DWORD type, const void* data, std::size_t size) {
    return RegSetKeyValueW(HKEY_CURRENT_USER, StateKeyPath().c_str(), name, type, data,
                           static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

}  // namespace

std::wstring StateKeyPath() {
    return FromEnvironment(L"StateKey").value_or(kDefaultStateKey);
}

std::wstring StateObjectName(const std::wstring& name) {
    std::wstring text = StateKeyPath() + L"/" + name;
    // The only character that such a name may not hold.
    for (wchar_t& c : text) c = c == L'\\' ? L'/' : c;
    return L"Local\\" + text;
}

std::uint32_t StateDword(const wchar_t* name, std::uint32_t fallback) {
    return Dword(name, fallback, ReadStateValue);
}

std::uint32_t CountedStateDword(const wchar_t* name, std::uint32_t fallback) {
    return Dword(name, fallback, ReadCountedValue);
}

std::optional<std::uint64_t> StateQword(const wchar_t* name) {
    return Number(name, ReadStateValue);
}

std::wstring StateString(const wchar_t* name, const std::wstring& fallback) {
    if (const auto text = FromEnvironment(name)) return *text;
    const auto stored = ReadStateValue(name);
    return stored ? AsText(*stored).value_or(fallback) : fallback;
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

bool SetStateBinary(const wchar_t* name, const void* data, std::size_t size) {
    return Write(name, REG_BINARY, data, size);
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

std::uint32_t FaultCount(const wchar_t* fault) {
    const std::wstring faults = L" " + InjectedFaults() + L" ";
    if (FaultIn(faults, fault)) return 1;
    const std::wstring counted = L" " + std::wstring(fault) + L":";
    const std::size_t at = faults.find(counted);
    return at == std::wstring::npos ? 0 : std::wcstoul(faults.c_str() + at + counted.size(), nullptr, 10);
}

std::wstring DeviceRoot() {
    std::wstring root = StateString(L"DeviceRoot", L"");
    while (!root.empty() && (root.back() == L'\\' || root.back() == L'/')) root.pop_back();
    return root;
}

bool StorageCardPresent() {
    return StateDword(L"StorageCard", 1) != 0;
}

CDevicePath OnDevice(const wchar_t* path) {
    CDevicePath place(path, DeviceRoot(), StorageCardPresent);
    if (!place) SetLastError(ERROR_PATH_NOT_FOUND);
    return place;
}

std::wstring HostPath(const wchar_t* devicePath) {
    if (devicePath == nullptr) return L"";
    return CDevicePath(devicePath, DeviceRoot(), [] { return true; }).host();
}

std::wstring DevicePathOf(const std::wstring& hostPath) {
    return DevicePathOfHost(hostPath, DeviceRoot());
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
    const Root* const row = RowWith(kRoots, &Root::key, root);
    return row == nullptr ? L"" : StateKeyPath() + L"\\Registry\\" + row->name;
}

}  // namespace handset
