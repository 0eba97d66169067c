#include "tuner/digit_machine.h"

#include <strsafe.h>

#include <cstddef>
#include <iterator>

namespace {

constexpr std::uint32_t kLastOfThree = 2;
constexpr std::uint32_t kLastOfFour = 3;

bool AnnouncesFour(const DigitEntry& entry) {
    return entry.auDigit[0] == 1;
}

bool IsAccepted(const DigitEntry& entry) {
    return AnnouncesFour(entry) ? entry.uCount <= kLastOfFour : entry.uCount <= kLastOfThree;
}

bool IsLast(const DigitEntry& entry) {
    return entry.uCount == (AnnouncesFour(entry) ? kLastOfFour : kLastOfThree);
}

std::uint32_t FourDigitChannel(const DigitEntry& entry) {
    const std::uint32_t(&d)[4] = entry.auDigit;
    return (((10 + d[1]) * 10 + d[2]) * 10 + d[3]) * 10;
}

std::uint32_t ThreeDigitChannel(const DigitEntry& entry) {
    const std::uint32_t(&d)[4] = entry.auDigit;
    return (d[0] * 100 + d[1] * 10 + d[2]) * 10;
}

// The value by which the echo tells whether the frequency lies in the band.
std::uint32_t Candidate(const DigitEntry& entry) {
    if (AnnouncesFour(entry)) return FourDigitChannel(entry);
    // Kept: the fourth cell is that of an earlier entry here. The band begins and ends on a tenth of a
    // megahertz, so the answer does not depend on it.
    const std::uint32_t(&d)[4] = entry.auDigit;
    return ((d[0] * 10 + d[1]) * 10 + d[2]) * 10 + d[3];
}

DigitEcho EchoOf(const DigitEntry& entry) {
    if (IsLast(entry)) {
        if (!IsInBand(Candidate(entry))) return DigitEcho::kOutOfBand;
        return AnnouncesFour(entry) ? DigitEcho::kFrom100 : DigitEcho::kBelow100;
    }
    constexpr DigitEcho kByPosition[] = {DigitEcho::kFirst, DigitEcho::kSecond, DigitEcho::kThird};
    return kByPosition[entry.uCount];
}

void Complete(DigitEntry& entry, DigitStep& step) {
    if (!AnnouncesFour(entry)) entry.auDigit[3] = 0;
    step.bComplete = true;
    step.uChannel = AnnouncesFour(entry) ? FourDigitChannel(entry) : ThreeDigitChannel(entry);
    step.bTune = IsInBand(step.uChannel);
    if (!step.bTune) {
        for (std::uint32_t& digit : entry.auDigit) digit = 0;
    }
    entry.uCount = 0;
}

}  // namespace

DigitStep TakeDigit(DigitEntry& entry, std::uint32_t digit) {
    DigitStep step = {};
    entry.auDigit[entry.uCount] = digit;
    if (!IsAccepted(entry)) return step;

    step.bTaken = true;
    step.uPosition = entry.uCount;
    step.uDigit = digit;
    step.echo = EchoOf(entry);
    if (IsLast(entry)) {
        Complete(entry, step);
    } else {
        ++entry.uCount;
    }
    return step;
}

FrequencyText DigitLabel(const DigitEntry& entry, DigitEcho echo) {
    // By DigitEcho; each takes as many of the four digits as it has places.
    constexpr const wchar_t* kFormats[] = {
        L"%d_._", L"%d%d._", L"%d%d%d._", L"%d%d.%d MHz", L"%d%d%d.%d MHz", L"",
    };
    const std::uint32_t(&d)[4] = entry.auDigit;
    FrequencyText label = {};
    StringCchPrintfW(label.sz, std::size(label.sz), kFormats[static_cast<std::size_t>(echo)], d[0], d[1],
                     d[2], d[3]);
    return label;
}
