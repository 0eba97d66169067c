// The registry helpers: one value of the device's registry read or written in one call.
#include <algorithm>
#include <cwchar>
#include <string>
#include <vector>

#include "handset/aygshell/owned.h"
#include "handset/aygshell/registry_value.h"
#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/include/regext.h"
#include "handset/state/handset_state.h"

namespace handset {

namespace {

// A key that the application has opened itself.
std::optional<RegistryValue> ReadOfOpenKey(HKEY root, const wchar_t* key, const wchar_t* name) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root, key, 0, KEY_READ, &opened) != ERROR_SUCCESS) return std::nullopt;
    const OwnedKey owned(opened);
    RegistryValue value;
    // The value may grow between the question for its size and the reading.
    for (;;) {
        DWORD size = static_cast<DWORD>(value.data.size());
        const LONG error = RegQueryValueExW(opened, name, nullptr, &value.type,
                                            value.data.empty() ? nullptr : value.data.data(), &size);
        const bool complete = error == ERROR_SUCCESS && size <= value.data.size();
        if (error != ERROR_SUCCESS && error != ERROR_MORE_DATA) return std::nullopt;
        value.data.resize(size);
        if (complete) return value;
    }
}

}  // namespace

std::optional<RegistryValue> ReadRegistryValue(HKEY root, const wchar_t* key, const wchar_t* name) {
    std::wstring path = DeviceRegistryRootPath(root);
    if (key == nullptr) key = L"";
    if (path.empty()) return ReadOfOpenKey(root, key, name);
    while (*key == L'\\') ++key;
    if (*key != L'\0') path.append(L"\\").append(key);
    return ReadStoredValue(path, name);
}

std::optional<DWORD> AsDword(const RegistryValue& value) {
    DWORD number = 0;
    if (value.type != REG_DWORD || value.data.size() != sizeof number) return std::nullopt;
    std::copy(value.data.begin(), value.data.end(), reinterpret_cast<BYTE*>(&number));
    return number;
}

std::optional<std::wstring> AsString(const RegistryValue& value) {
    if (value.type != REG_SZ) return std::nullopt;
    std::wstring text(value.data.size() / sizeof(wchar_t), L'\0');
    std::copy_n(value.data.begin(), text.size() * sizeof(wchar_t), reinterpret_cast<BYTE*>(text.data()));
    return text.substr(0, text.find(L'\0'));
}

}  // namespace handset

namespace {

HRESULT WriteValue(HKEY root, LPCWSTR key, LPCWSTR name, DWORD type, const void* data, std::size_t size) {
    HKEY opened = nullptr;
    if (RegCreateKeyExW(root, key == nullptr ? L"" : key, 0, nullptr, 0, KEY_WRITE, nullptr, &opened,
                        nullptr) != ERROR_SUCCESS) {
        return E_FAIL;
    }
    const handset::OwnedKey owned(opened);
    const LONG error =
        RegSetValueExW(opened, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size));
    return error == ERROR_SUCCESS ? S_OK : E_FAIL;
}

}  // namespace

extern "C" HRESULT WINAPI RegistryGetDWORD(HKEY root, LPCWSTR key, LPCWSTR value, DWORD* data) try {
    const PlatformCall call;
    if (root == nullptr || data == nullptr) return E_INVALIDARG;
    const auto stored = handset::ReadRegistryValue(root, key, value);
    const auto number = stored ? handset::AsDword(*stored) : std::nullopt;
    if (!number) return E_FAIL;
    *data = *number;
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

extern "C" HRESULT WINAPI RegistrySetDWORD(HKEY root, LPCWSTR key, LPCWSTR value, DWORD data) try {
    const PlatformCall call;
    if (root == nullptr) return E_INVALIDARG;
    return WriteValue(root, key, value, REG_DWORD, &data, sizeof data);
} catch (...) {
    return handset::EdgeResult();
}

extern "C" HRESULT WINAPI RegistryGetString(HKEY root, LPCWSTR key, LPCWSTR value, LPWSTR data,
                                            UINT count) try {
    const PlatformCall call;
    if (root == nullptr || data == nullptr || count == 0) return E_INVALIDARG;
    const auto stored = handset::ReadRegistryValue(root, key, value);
    const auto text = stored ? handset::AsString(*stored) : std::nullopt;
    if (!text) return E_FAIL;
    if (text->size() >= count) return HRESULT_FROM_WIN32(ERROR_MORE_DATA);
    std::copy_n(text->c_str(), text->size() + 1, data);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

extern "C" HRESULT WINAPI RegistrySetString(HKEY root, LPCWSTR key, LPCWSTR value, LPCWSTR data) try {
    const PlatformCall call;
    if (root == nullptr || data == nullptr) return E_INVALIDARG;
    return WriteValue(root, key, value, REG_SZ, data, (std::wcslen(data) + 1) * sizeof(wchar_t));
} catch (...) {
    return handset::EdgeResult();
}
