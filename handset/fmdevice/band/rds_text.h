// What a receiver gives away of a station's RDS: its texts one by one, and what else is known. Portable;
// texts in UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "handset/fmdevice/band/band.h"

namespace fm {

enum class RdsTextKind { kServiceName, kRadioText, kProgramText };
inline constexpr std::size_t kRdsTextKinds = 3;

struct RdsText {
    RdsTextKind kind;
    std::string text;
};

struct StationServices {
    bool serviceName = false;
    bool radioText = false;
    bool clockTime = false;
    bool trafficProgramme = false;
    bool trafficAnnouncement = false;
    int programmeType = kNoProgrammeType;  // 0 to 31
    std::vector<std::uint32_t> alternatives_10kHz;
    // Groups come in, so that what they say is of now.
    bool received = false;
};

}  // namespace fm
