// UTF-8 texts by characters. Portable.
#pragma once

#include <cstddef>
#include <string_view>

namespace fm {

// True for well-formed UTF-8 (RFC 3629: no overlong forms, no surrogates, nothing above U+10FFFF).
[[nodiscard]] bool IsUtf8(std::string_view text);
// The first `characters` characters of a well-formed text, or all of it when it has no more.
[[nodiscard]] std::string_view Utf8Prefix(std::string_view text, std::size_t characters);

// The number of characters of a well-formed text.
[[nodiscard]] std::size_t Utf8Length(std::string_view text);

}  // namespace fm
