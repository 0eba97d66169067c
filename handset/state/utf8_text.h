// Texts between UTF-8 (files, pipes, logs) and UTF-16 (the system's calls). What is not well-formed becomes
// U+FFFD.
#pragma once

#include <string>
#include <string_view>

namespace handset {

[[nodiscard]] std::string Utf8(std::wstring_view text);
[[nodiscard]] std::wstring Wide(std::string_view utf8);

}  // namespace handset
