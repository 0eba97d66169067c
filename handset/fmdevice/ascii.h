// Comparing ASCII words without regard to letter case. Portable.
#pragma once

#include <string_view>

namespace fm {

inline char LowerLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline bool SameLetters(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (LowerLetter(a[i]) != LowerLetter(b[i])) return false;
    }
    return true;
}

}  // namespace fm
