// The mark of a letter key in the text of a control or a menu: an "&" before the letter.
#pragma once

#include <cstddef>
#include <string>

namespace handset {

// The letters as they are drawn: without the marks; two "&" are one. Any thread.
inline std::wstring WithoutMnemonic(const std::wstring& text) {
    std::wstring letters;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == L'&' && ++at == text.size()) break;
        letters += text[at];
    }
    return letters;
}

}  // namespace handset
