// The registry helpers: one value of the device's registry read or written in one call.
#include <algorithm>
#include <cwchar>
#include <string>

#include "handset/aygshell/device_value.h"
#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/include/regext.h"
#include "handset/state/handset_state.h"
#include "handset/state/stored_value.h"

namespace handset {

std::optional<RegistryValue> ReadDeviceValue(HKEY root, const wchar_t* key, const wchar_t* name) {
    std::wstring path = DeviceRegistryRootPath(root);
    if (key == nullptr) key = L"";
    while (*key == L'\\') ++key;
    if (path.empty()) return ReadRegistryValue(root, key, name);
    if (*key != L'\0') path.append(L"\\").append(key);
    return ReadStoredValue(path, name);
}

}  // namespace handset

namespace {

HRESULT WriteValue(HKEY root, LPCWSTR key, LPCWSTR name, DWORD type, const void* data, std::size_t size) {
    handset::OwnedKey opened;
    if (RegCreateKeyExW(root, key == nullptr ? L"" : key, 0, nullptr, 0, KEY_WRITE, nullptr,
                        handset::Put(opened), nullptr) != ERROR_SUCCESS) {
        return E_FAIL;
    }
    const LONG error =
        RegSetValueExW(opened.get(), name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size));
    return error == ERROR_SUCCESS ? S_OK : E_FAIL;
}

}  // namespace

extern "C" HRESULT WINAPI RegistryGetDWORD(HKEY root, LPCWSTR key, LPCWSTR value, DWORD* data) try {
    const CPlatformCall call;
    if (root == nullptr || data == nullptr) return E_INVALIDARG;
    const auto stored = handset::ReadDeviceValue(root, key, value);
    const auto number = stored ? handset::AsDword(*stored) : std::nullopt;
    if (!number) return E_FAIL;
    *data = *number;
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

extern "C" HRESULT WINAPI RegistrySetDWORD(HKEY root, LPCWSTR key, LPCWSTR value, DWORD data) try {
    const CPlatformCall call;
    if (root == nullptr) return E_INVALIDARG;
    return WriteValue(root, key, value, REG_DWORD, &data, sizeof data);
} catch (...) {
    return handset::EdgeResult();
}

extern "C" HRESULT WINAPI RegistryGetString(HKEY root, LPCWSTR key, LPCWSTR value, LPWSTR data,
                                            UINT count) try {
    const CPlatformCall call;
    if (root == nullptr || data == nullptr || count == 0) return E_INVALIDARG;
    const auto stored = handset::ReadDeviceValue(root, key, value);
    const auto text = stored ? handset::AsText(*stored) : std::nullopt;
    if (!text) return E_FAIL;
    if (text->size() >= count) return HRESULT_FROM_WIN32(ERROR_MORE_DATA);
    std::copy_n(text->c_str(), text->size() + 1, data);
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

extern "C" HRESULT WINAPI RegistrySetString(HKEY root, LPCWSTR key, LPCWSTR value, LPCWSTR data) try {
    const CPlatformCall call;
    if (root == nullptr || data == nullptr) return E_INVALIDARG;
    return WriteValue(root, key, value, REG_SZ, data, (std::wcslen(data) + 1) * sizeof(wchar_t));
} catch (...) {
    return handset::EdgeResult();
}
