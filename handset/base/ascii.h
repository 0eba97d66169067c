// ASCII words: compared without regard to letter case, and freed of the blanks around them. Portable.
#pragma once

#include <string_view>

namespace handset {

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

inline std::string_view Trimmed(std::string_view text, std::string_view blanks = " \t") {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace handset
