// The basic character table into Unicode. Portable.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sdr::rds {

// The letter of a code in UTF-8; a blank where the table has none.
[[nodiscard]] std::string_view LetterOf(std::uint8_t code);
[[nodiscard]] std::string LettersOf(std::string_view codes);
[[nodiscard]] std::string WithoutTrailingBlanks(std::string text);

}  // namespace sdr::rds
