// The band and the text forms of a frequency. Portable: nothing here needs a window or the device.
//
// A channel value is a frequency in units of 10 kHz: 8750 = 87.50 MHz.
#pragma once

#include <cstdint>

inline constexpr std::uint32_t kBandLowest_10kHz = 8750;
inline constexpr std::uint32_t kBandHighest_10kHz = 10800;
// One step up or down by hand.
inline constexpr std::uint32_t kTuningStep_10kHz = 10;

// 87.50 to 108.00 MHz, both included.
bool IsInBand(std::uint32_t channel);

// A frequency as text; every form fits, whatever the value.
struct FrequencyText {
    wchar_t sz[32];
};

// Megahertz with one decimal ("87.5"). The hundredths are dropped, not rounded: 8755 is "87.5".
FrequencyText PlainFrequencyText(std::uint32_t channel);
// "87.5 MHz", as the main screen shows it.
FrequencyText ScreenFrequencyText(std::uint32_t channel);
// "87.5 MHz " with a blank at its end, the second column of the channel list. A row is found again by
// comparing this text whole, the blank included.
FrequencyText ListFrequencyText(std::uint32_t channel);
// "FM 87.5 MHz", the head line of the RDS information.
FrequencyText HeadlineFrequencyText(std::uint32_t channel);

// Channel value of an alternative frequency as the device writes it, in megahertz with one decimal: the point
// is deleted and a 0 appended ("98.5" is 9850). 0 for a text without a point, with anything but digits around
// it, or too large for 32 bits.
std::uint32_t ChannelFromAFText(const wchar_t* text);
