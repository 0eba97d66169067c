// The band at a glance: the levels of all channels as last seen, and what is known of the tuned station.
// Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "handset/fmdevice/band/band.h"
#include "handset/phone/phone_layout.h"
#include "handset/state/reception_state.h"

namespace panel {

struct BandShown {
    handset::BandLevels levels{};   // kLevelNotSeen where nobody has looked yet
    std::uint32_t tuned_10kHz = 0;  // 0: nothing is
    std::wstring words;             // figures of the tuned station, or why an antenna gives none
    bool operator==(const BandShown& other) const {
        return levels == other.levels && tuned_10kHz == other.tuned_10kHz && words == other.words;
    }
};

// What the handset knows when the strip is drawn.
struct BandFacts {
    std::optional<handset::ReceptionState> reception;  // as the tuner device publishes it, if it does
    fm::Band band;                                     // the band file's
    std::optional<std::uint32_t> limit;                // no station comes in better
    std::uint32_t limited_10kHz = 0;                   // that one alone; 0 = every one
    std::uint32_t tuned_10kHz = 0;                     // 0: the radio is off
};
BandShown ShowBand(const BandFacts& facts);

// Where the bars stand in the strip, and the left edge and the width of a channel's.
Box BandBars(const Box& strip);
double BandPlace(const Box& strip, std::uint32_t channel_10kHz);
// The channel at a place of the strip: the strongest station within a stylus' breadth, or else the very
// channel. Nothing beside the bars.
std::optional<std::uint32_t> BandChannelAt(const Box& strip, const BandShown& shown, int x, int y);
// The digits that tune the radio there.
std::vector<PhoneKey> DigitsOf(std::uint32_t channel_10kHz);

}  // namespace panel
