#include "handset/base/utf8.h"

#include <cstdint>

namespace handset {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLast = 0x10FFFF;
constexpr char32_t kFirstOfPairs = 0x10000;

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}
bool IsHigh(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLow(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUtf8(char32_t point, std::string* bytes) {
    const auto tail = [&](int shift) { bytes->push_back(static_cast<char>(0x80 | (point >> shift & 0x3F))); };
    if (point < 0x80) {
        bytes->push_back(static_cast<char>(point));
    } else if (point < 0x800) {
        bytes->push_back(static_cast<char>(0xC0 | point >> 6));
        tail(0);
    } else if (point < kFirstOfPairs) {
        bytes->push_back(static_cast<char>(0xE0 | point >> 12));
        tail(6), tail(0);
    } else {
        bytes->push_back(static_cast<char>(0xF0 | point >> 18));
        tail(12), tail(6), tail(0);
    }
}

template <typename Units>
std::string FromUnits(Units text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto point = static_cast<char32_t>(text[i]);
        if (IsHigh(point) && i + 1 < text.size() && IsLow(static_cast<char32_t>(text[i + 1]))) {
            point = kFirstOfPairs + ((point - 0xD800) << 10) + (static_cast<char32_t>(text[++i]) - 0xDC00);
        } else if (IsHigh(point) || IsLow(point) || point > kLast) {
            point = kReplacement;
        }
        AppendUtf8(point, &bytes);
    }
    return bytes;
}

template <typename Text>
void AppendUnits(char32_t point, Text* text) {
    using Unit = typename Text::value_type;
    if (point < kFirstOfPairs || sizeof(Unit) > sizeof(char16_t)) {
        text->push_back(static_cast<Unit>(point));
        return;
    }
    text->push_back(static_cast<Unit>(0xD800 + ((point - kFirstOfPairs) >> 10)));
    text->push_back(static_cast<Unit>(0xDC00 + (point & 0x3FF)));
}

}  // namespace

std::optional<char32_t> TakeCharacter(std::string_view* utf8) {
    struct Form {
        char32_t lowest;  // a smaller code point has a shorter form
        std::uint8_t mask, lead, length;
    };
    constexpr Form kForms[] = {
        {0, 0x80, 0x00, 1},
        {0x80, 0xE0, 0xC0, 2},
        {0x800, 0xF0, 0xE0, 3},
        {kFirstOfPairs, 0xF8, 0xF0, 4},
    };
    if (utf8->empty()) return std::nullopt;
    const auto lead = static_cast<std::uint8_t>(utf8->front());
    for (const Form& form : kForms) {
        if ((lead & form.mask) != form.lead) continue;
        if (utf8->size() < form.length) return std::nullopt;
        char32_t point = lead & static_cast<std::uint8_t>(~form.mask);
        for (std::size_t i = 1; i < form.length; ++i) {
            if (!IsContinuation((*utf8)[i])) return std::nullopt;
            point = point << 6 | (static_cast<std::uint8_t>((*utf8)[i]) & 0x3F);
        }
        if (point < form.lowest || point > kLast || IsHigh(point) || IsLow(point)) return std::nullopt;
        utf8->remove_prefix(form.length);
        return point;
    }
    return std::nullopt;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        if (!TakeCharacter(&text)) return false;
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

std::string Utf8(std::wstring_view text) {
    return FromUnits(text);
}

std::string Utf8(std::u16string_view text) {
    return FromUnits(text);
}

std::wstring Wide(std::string_view utf8) {
    std::wstring text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::optional<char32_t> point = TakeCharacter(&utf8);
        if (!point) utf8.remove_prefix(1);
        AppendUnits(point.value_or(kReplacement), &text);
    }
    return text;
}

std::optional<std::u16string> Utf16(std::string_view utf8) {
    std::u16string text;
    while (!utf8.empty()) {
        const std::optional<char32_t> point = TakeCharacter(&utf8);
        if (!point) return std::nullopt;
        AppendUnits(*point, &text);
    }
    return text;
}

}  // namespace handset
