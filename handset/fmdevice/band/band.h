// What the antenna of the handset receives, as data: the stations of the band and what each of them sends.
// Portable. Channels are in units of 10 kHz (8750 = 87.50 MHz), levels from 0 to 100, texts in UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "handset/fmdevice/band/programme.h"

namespace fm {

inline constexpr std::uint32_t kBandBottom_10kHz = 8750;
inline constexpr std::uint32_t kBandTop_10kHz = 10800;
// Stations stand 100 kHz apart; a seek stops on this raster only.
inline constexpr std::uint32_t kRaster_10kHz = 10;

inline constexpr bool InBand(std::uint32_t channel) {
    return channel >= kBandBottom_10kHz && channel <= kBandTop_10kHz;
}

// The level where no station sends. A seek takes a channel for a station when its level is above
// kSeekThreshold; a station at or below it is reached by tuning only.
inline constexpr int kNoiseLevel = 3;
inline constexpr int kSeekThreshold = 5;
// Stereo is decoded above this level; below it the difference signal would be mostly noise.
inline constexpr int kStereoThreshold = 20;

// Lengths of IEC 62106, in characters: PS (3.2.2), RT (3.1.5.3), PTYN (3.1.5.14), and AF codes of a list by
// method A (3.2.1.6.3).
inline constexpr std::size_t kServiceNameLength = 8;
inline constexpr std::size_t kRadioTextLength = 64;
inline constexpr std::size_t kProgramTextLength = 8;
inline constexpr std::size_t kMaxAlternatives = 25;
inline constexpr int kNoProgrammeType = -1;

// How many names and texts a station may send in turn, and for how long each of them by default.
inline constexpr std::size_t kMaxServiceNames = 8;
inline constexpr std::size_t kMaxRadioTexts = 16;
inline constexpr int kNameTime_s = 8;
inline constexpr int kTextTime_s = 30;

// What a station sends by RDS. All empty: it sends none.
struct RdsData {
    std::vector<std::string> serviceNames;
    std::vector<std::string> radioTexts;
    int nameTime_s = kNameTime_s;          // handset seconds
    int textTime_s = kTextTime_s;          // likewise
    std::string programText;               // programme type name
    int programmeType = kNoProgrammeType;  // 0 to 31
    std::vector<std::uint32_t> alternatives_10kHz;
    bool clockTime = false;
    bool trafficProgramme = false;     // it tells of the traffic at times (TP)
    bool trafficAnnouncement = false;  // it does so now (TA)

    // What is sent at a time of the handset's clock; empty when the station has none.
    const std::string& ServiceName(std::uint64_t now_ms) const {
        return InTurn(serviceNames, nameTime_s, now_ms);
    }
    const std::string& RadioText(std::uint64_t now_ms) const {
        return InTurn(radioTexts, textTime_s, now_ms);
    }
    bool Sent() const {
        return !serviceNames.empty() || !radioTexts.empty() || !programText.empty() ||
               programmeType != kNoProgrammeType || !alternatives_10kHz.empty() || clockTime ||
               trafficProgramme || trafficAnnouncement;
    }

  private:
    static const std::string& InTurn(const std::vector<std::string>& texts, int time_s,
                                     std::uint64_t now_ms) {
        static const std::string kNone;
        if (texts.empty()) return kNone;
        return texts[now_ms / (static_cast<std::uint64_t>(time_s) * 1000) % texts.size()];
    }
};

struct Station {
    int level = 40;
    bool stereo = false;
    RdsData rds;
    Programme programme;
};

struct Band {
    bool wrap = true;                           // a seek past one end goes on from the other
    std::map<std::uint32_t, Station> stations;  // by channel
};

}  // namespace fm
