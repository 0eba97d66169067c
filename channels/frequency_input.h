// A frequency as a person types it, in megahertz with up to two decimals. Portable.
#pragma once

#include <cstdint>

enum class FrequencyInput { kEmpty, kInvalid, kValid };

// Reads "98", "98.5" or "98.25" into units of 10 kHz. Empty: nothing, or nothing before the point. Invalid:
// another number of decimals, or outside the band.
FrequencyInput ReadFrequency(const wchar_t* text, std::uint32_t* channel);

// Whether a character may be typed into a frequency that already holds `hasPoint`: digits, one point, and
// backspace.
bool IsFrequencyCharacter(wchar_t character, bool hasPoint);
