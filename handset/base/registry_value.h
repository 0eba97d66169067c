// Values of the host's registry: the one way to read them and what they say. Host code only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace handset {

// As it is stored.
struct RegistryValue {
    DWORD type = REG_NONE;
    std::vector<BYTE> data;

    bool operator==(const RegistryValue& other) const { return type == other.type && data == other.data; }
    bool operator!=(const RegistryValue& other) const { return !(*this == other); }
};

// Nobody of the handset writes a longer one.
inline constexpr std::size_t kLongestRegistryValue_bytes = 16 << 20;

// The whole value `name` of the key `path` below an open key or one of the host's roots; nothing when it is
// not there or too long. Keeps up with a writer that makes it longer meanwhile.
[[nodiscard]] std::optional<RegistryValue> ReadRegistryValue(HKEY key, const std::wstring& path,
                                                             const wchar_t* name);

// What it says; nothing for another type, or a number that has not its size. A text ends at its terminator,
// or at its end when it was stored without one.
[[nodiscard]] std::optional<DWORD> AsDword(const RegistryValue& value);
[[nodiscard]] std::optional<std::uint64_t> AsNumber(const RegistryValue& value);  // REG_DWORD or REG_QWORD
[[nodiscard]] std::optional<std::wstring> AsText(const RegistryValue& value);

[[nodiscard]] RegistryValue BytesValue(DWORD type, const void* data, std::size_t size);
[[nodiscard]] RegistryValue DwordValue(std::uint32_t number);
[[nodiscard]] RegistryValue TextValue(const std::wstring& text);

}  // namespace handset
