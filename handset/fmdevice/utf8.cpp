// UTF-8 texts by characters.
#include "handset/fmdevice/utf8.h"

#include <cstdint>

namespace fm {
namespace {

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Length of the well-formed character at the beginning of a text that is not empty; 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
    struct Form {
        std::uint32_t lowest;  // a smaller code point has a shorter form
        std::uint8_t mask, lead, length;
    };
    constexpr Form kForms[] = {
        {0, 0x80, 0x00, 1},
        {0x80, 0xE0, 0xC0, 2},
        {0x800, 0xF0, 0xE0, 3},
        {0x10000, 0xF8, 0xF0, 4},
    };
    const auto lead = static_cast<std::uint8_t>(text[0]);
    for (const Form& form : kForms) {
        if ((lead & form.mask) != form.lead) continue;
        if (text.size() < form.length) return 0;
        std::uint32_t point = lead & static_cast<std::uint8_t>(~form.mask);
        for (std::size_t i = 1; i < form.length; ++i) {
            if (!IsContinuation(text[i])) return 0;
            point = point << 6 | (static_cast<std::uint8_t>(text[i]) & 0x3F);
        }
        const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
        return point >= form.lowest && point <= 0x10FFFF && !surrogate ? form.length : 0;
    }
    return 0;
}

}  // namespace

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string_view Utf8Prefix(std::string_view text, std::size_t characters) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsContinuation(text[i])) continue;
        if (characters == 0) return text.substr(0, i);
        --characters;
    }
    return text;
}

std::size_t Utf8Length(std::string_view text) {
    std::size_t characters = 0;
    for (const char byte : text) characters += IsContinuation(byte) ? 0 : 1;
    return characters;
}

}  // namespace fm
