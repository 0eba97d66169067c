// Texts in UTF-8 (files, pipes, logs, what is on the air) and in UTF-16 (the system's calls). Portable.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace handset {

// The character at the front of `utf8`, which is taken away from it. Nothing, and nothing taken, when there
// is none that is well-formed (RFC 3629: no overlong forms, no surrogates, nothing above U+10FFFF).
[[nodiscard]] std::optional<char32_t> TakeCharacter(std::string_view* utf8);
// True for well-formed UTF-8.
[[nodiscard]] bool IsUtf8(std::string_view text);
// The first `characters` characters of a well-formed text, or all of it when it has no more.
[[nodiscard]] std::string_view Utf8Prefix(std::string_view text, std::size_t characters);
// The number of characters of a well-formed text.
[[nodiscard]] std::size_t Utf8Length(std::string_view text);

// Half a character, which UTF-16 may hold and UTF-8 may not, becomes U+FFFD.
[[nodiscard]] std::string Utf8(std::wstring_view text);
[[nodiscard]] std::string Utf8(std::u16string_view text);
// Each byte that is of no well-formed character becomes U+FFFD.
[[nodiscard]] std::wstring Wide(std::string_view utf8);
// Nothing for a text that is not well-formed.
[[nodiscard]] std::optional<std::u16string> Utf16(std::string_view utf8);

}  // namespace handset
