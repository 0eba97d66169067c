#include "handset/base/registry_value.h"

#include <algorithm>
#include <cstring>

namespace handset {
namespace {

// Nearly every value fits at the first try.
constexpr std::size_t kFirstTry_bytes = 256;

std::uint64_t LittleEndian(const std::vector<BYTE>& bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) number = number << 8 | bytes[i];
    return number;
}

}  // namespace

std::optional<RegistryValue> ReadRegistryValue(HKEY key, const std::wstring& path, const wchar_t* name) {
    RegistryValue value;
    value.data.resize(kFirstTry_bytes);
    while (value.data.size() <= kLongestRegistryValue_bytes) {
        auto size = static_cast<DWORD>(value.data.size());
        const LSTATUS status = RegGetValueW(key, path.c_str(), name, RRF_RT_ANY | RRF_NOEXPAND, &value.type,
                                            value.data.data(), &size);
        if (status == ERROR_MORE_DATA) {
            value.data.resize(std::max<std::size_t>(size, 2 * value.data.size()));
            continue;
        }
        if (status != ERROR_SUCCESS) return std::nullopt;
        value.data.resize(size);
        return value;
    }
    return std::nullopt;
}

std::optional<DWORD> AsDword(const RegistryValue& value) {
    if (value.type != REG_DWORD || value.data.size() != sizeof(DWORD)) return std::nullopt;
    return static_cast<DWORD>(LittleEndian(value.data));
}

std::optional<std::uint64_t> AsNumber(const RegistryValue& value) {
    if (value.type != REG_QWORD) return AsDword(value);
    if (value.data.size() != sizeof(std::uint64_t)) return std::nullopt;
    return LittleEndian(value.data);
}

std::optional<std::wstring> AsText(const RegistryValue& value) {
    if (value.type != REG_SZ) return std::nullopt;
    std::wstring text(value.data.size() / sizeof(wchar_t), L'\0');
    std::copy_n(value.data.begin(), text.size() * sizeof(wchar_t), reinterpret_cast<BYTE*>(text.data()));
    return text.substr(0, text.find(L'\0'));
}

RegistryValue BytesValue(DWORD type, const void* data, std::size_t size) {
    RegistryValue value{type, std::vector<BYTE>(size)};
    if (size > 0) std::memcpy(value.data.data(), data, size);
    return value;
}

RegistryValue DwordValue(std::uint32_t number) {
    return BytesValue(REG_DWORD, &number, sizeof number);
}

RegistryValue TextValue(const std::wstring& text) {
    return BytesValue(REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

}  // namespace handset
