// Unicode texts as the letters of RDS: the code table of IEC 62106-4. Portable.
#pragma once

#include <cstdint>
#include <string>

namespace transmitter {

// One code a letter; what the table does not have becomes a blank, and so does a byte that is no UTF-8.
[[nodiscard]] std::string ToLetters(const std::string& utf8);

}  // namespace transmitter
