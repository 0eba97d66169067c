// The state machine of typed digits, without its effects. Portable.
//
// Three digits make a frequency below 100 MHz (87.5); a first digit of 1 announces four (108.0).
#pragma once

#include <cstdint>

#include "tuner/frequency.h"

struct DigitEntry {
    std::uint32_t uCount;      // digits taken, 0 to 3
    std::uint32_t auDigit[4];  // d0 … d3
};

// What the frequency's label shows after a digit.
enum class DigitEcho {
    kFirst,      // "8_._"
    kSecond,     // "87._"
    kThird,      // "107._", of four
    kBelow100,   // "87.5 MHz", whole
    kFrom100,    // "107.9 MHz", whole
    kOutOfBand,  // whole, and no frequency of the band: the tuned frequency again
};

struct DigitStep {
    bool bTaken;              // false: the digit was ignored and nothing below holds
    std::uint32_t uPosition;  // 0 to 3: where the digit stands
    std::uint32_t uDigit;
    DigitEcho echo;
    bool bComplete;          // the entry ended with this digit
    std::uint32_t uChannel;  // of a complete entry, in units of 10 kHz
    bool bTune;              // a complete entry inside the band
};

// Takes the next digit, 0 to 9.
DigitStep TakeDigit(DigitEntry& entry, std::uint32_t digit);

// The label's text, from the entry as the step left it; empty for kOutOfBand.
FrequencyText DigitLabel(const DigitEntry& entry, DigitEcho echo);
