#include "tuner/frequency.h"

#include <strsafe.h>

#include <cstddef>
#include <iterator>

namespace {

// The format takes whole megahertz and tenths.
FrequencyText Format(const wchar_t* format, std::uint32_t channel) {
    FrequencyText text = {};
    StringCchPrintfW(text.sz, std::size(text.sz), format, static_cast<int>(channel / 100),
                     static_cast<int>(channel % 100 / 10));
    return text;
}

}  // namespace

// One unsigned comparison: a value below the band wraps round and is too large as well.
bool IsInBand(std::uint32_t channel) {
    return channel - kBandLowest_10kHz <= kBandHighest_10kHz - kBandLowest_10kHz;
}

FrequencyText PlainFrequencyText(std::uint32_t channel) {
    return Format(L"%d.%d", channel);
}
FrequencyText ScreenFrequencyText(std::uint32_t channel) {
    return Format(L"%d.%d MHz", channel);
}
FrequencyText ListFrequencyText(std::uint32_t channel) {
    return Format(L"%d.%d MHz ", channel);
}
FrequencyText HeadlineFrequencyText(std::uint32_t channel) {
    return Format(L"FM %d.%d MHz", channel);
}

std::uint32_t ChannelFromAFText(const wchar_t* text) {
    std::uint64_t value = 0;
    bool point = false;
    for (; *text != L'\0'; ++text) {
        if (*text == L'.' && !point) {
            point = true;
            continue;
        }
        if (*text < L'0' || *text > L'9') return 0;
        value = value * 10 + static_cast<std::uint64_t>(*text - L'0');
        if (value * 10 > UINT32_MAX) return 0;
    }
    return point ? static_cast<std::uint32_t>(value * 10) : 0;
}
