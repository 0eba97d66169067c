// The programme types of IEC 62106 by their terms for a display of 16 characters. Portable.
#pragma once

#include <optional>
#include <string_view>

namespace fm {

inline constexpr int kProgrammeTypes = 32;

// The term of a type from 0 to 31.
[[nodiscard]] std::string_view ProgrammeTypeName(int type);
// The type of a term, in any letter case, of the beginning of one term only, or of a number from 0 to 31.
[[nodiscard]] std::optional<int> ProgrammeTypeOf(std::string_view text);

}  // namespace fm
