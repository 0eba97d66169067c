#include "channels/frequency_input.h"

#include <algorithm>
#include <cwchar>

#include "tuner/frequency.h"

namespace {

constexpr wchar_t kBackspace = 0x08;

// Digits are read up to the first character that is none. A number that is far beyond the band stays there,
// however many more there are.
std::uint32_t LeadingNumber(const wchar_t* text) {
    constexpr std::uint32_t kBeyondEveryBand = 1'000'000;
    std::uint32_t number = 0;
    for (; *text >= L'0' && *text <= L'9'; ++text)
        number = std::min(number * 10 + static_cast<std::uint32_t>(*text - L'0'), kBeyondEveryBand);
    return number;
}

bool Combine(std::uint32_t whole, const wchar_t* point, std::uint32_t* channel) {
    if (point == nullptr) {
        *channel = whole * 100;
        return true;
    }
    const std::size_t decimals = std::wcslen(point + 1);
    const std::uint32_t fraction = LeadingNumber(point + 1);
    if (decimals == 1) *channel = (whole * 10 + fraction) * 10;
    if (decimals == 2) *channel = whole * 100 + fraction;
    return decimals == 1 || decimals == 2;
}

}  // namespace

FrequencyInput ReadFrequency(const wchar_t* text, std::uint32_t* channel) {
    if (text[0] == L'\0' || text[0] == L'.') return FrequencyInput::kEmpty;
    if (!Combine(LeadingNumber(text), std::wcschr(text, L'.'), channel)) return FrequencyInput::kInvalid;
    return IsInBand(*channel) ? FrequencyInput::kValid : FrequencyInput::kInvalid;
}

bool IsFrequencyCharacter(wchar_t character, bool hasPoint) {
    if (character == L'.') return !hasPoint;
    return (character >= L'0' && character <= L'9') || character == kBackspace;
}
