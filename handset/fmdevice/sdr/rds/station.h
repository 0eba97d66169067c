// What has been decoded of a station. Portable. Times are seconds of signal since the decoder was started.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "handset/fmdevice/sdr/rds/receiver_chain.h"

namespace sdr::rds {

// A text in UTF-8. Nothing stands in it that was not received for certain: at odds that leave no doubt, or
// twice alike.
struct Text {
    std::string whole;        // the last one of which every letter is certain, and that they belong together
    std::string letters;      // the present one as far as it goes, blanks for what is not certain
    double whole_s = -1.0;    // when the whole one was seen last; -1: never
    double changed_s = -1.0;  // when it became what it is
};

enum class AlternativesMethod { kUnknown, kA, kB };

struct Alternatives {
    AlternativesMethod method = AlternativesMethod::kUnknown;
    std::vector<std::uint32_t> same_10kHz;      // the same programme
    std::vector<std::uint32_t> regional_10kHz;  // a regional variant of it (method B)
    std::vector<std::uint32_t> longMedium_kHz;
    bool whole = false;  // as many as were announced
};

struct ClockTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0;  // UTC
    int offset_min = 0;                                      // of local time
    double at_s = -1.0;                                      // when that minute began
};

struct RadioTextTag {
    int type = 0;  // content type of RT+
    std::string text;
};

struct MappedFrequency {
    std::uint32_t tuned_10kHz = 0;
    std::uint32_t other_10kHz = 0;
    bool operator==(const MappedFrequency& o) const {
        return tuned_10kHz == o.tuned_10kHz && other_10kHz == o.other_10kHz;
    }
};

struct OtherNetwork {
    std::uint16_t pi = 0;
    std::string serviceName;  // empty until whole
    Alternatives alternatives;
    std::vector<MappedFrequency> mapped;
    std::optional<bool> trafficProgramme, trafficAnnouncement;
    std::optional<int> programmeType;
    std::optional<std::uint16_t> itemNumber, linkage;
};

constexpr std::size_t kGroupKinds = 32;  // type times two, plus one for version B

struct Station {
    std::optional<std::uint16_t> pi;
    std::optional<int> programmeType;  // 0 to 31
    std::optional<bool> trafficProgramme, trafficAnnouncement, music;
    std::optional<bool> stereo, artificialHead, compressed, dynamicType;  // decoder identification (3.2.1.5)
    std::optional<int> extendedCountry, language;
    Text serviceName, radioText, programTypeName, longServiceName;
    std::optional<bool> radioTextFlag;  // B is true
    Alternatives alternatives;
    std::optional<ClockTime> clock;
    std::vector<RadioTextTag> tags;
    bool itemRunning = false;
    std::vector<OtherNetwork> others;
    std::array<std::uint16_t, kGroupKinds>
        applications{};  // the open data applications, by the group that carries them

    // The blocks and groups since the receiver has been in step.
    std::uint64_t blocks = 0;
    std::uint64_t blocksReceived = 0;
    std::uint64_t groups = 0;  // of which block 2 was received
    std::array<std::uint64_t, kGroupKinds> kinds{};
    float blockErrorRate = 1.0f;  // of the last second or so
    double lastGroup_s = -1.0;
    double now_s = 0.0;
    SignalQuality signal;
};

}  // namespace sdr::rds
