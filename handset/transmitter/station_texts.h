// What a station tells by RDS, and the groups that say it. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "handset/transmitter/group.h"

namespace transmitter {

// How a radio text shorter than 64 letters is closed.
enum class TextEnd { kReturn, kBlanks, kNothing };

// A part of the radio text that is of a kind, by its place in letters (RadioText Plus).
struct TextTag {
    int type = 0;
    int start = 0;
    int lettersMore = 0;  // letters beyond the first
};

// The local clock, as group 4A tells it: UTC and the distance to it.
struct ClockTime {
    long mjd = 61365;  // 23 November 2026
    int hour = 12;
    int minute = 0;
    double second = 0;
    int halfHours = 0;  // local time is so many half hours ahead
};

// Another network that the station tells of (EON).
struct OtherNetwork {
    std::uint16_t pi = 0;
    std::string ps;
    int pty = 0;
    bool tp = false;
    bool ta = false;
    std::vector<double> frequencies_MHz;
};

// Texts are UTF-8.
struct StationTexts {
    std::uint16_t pi = 0xD301;
    int pty = 0;
    bool tp = false;
    bool ta = false;
    bool music = true;
    int decoder = 1;  // decoder identification: 1 stereo, 2 artificial head, 4 compressed, 8 dynamic PTY
    std::vector<std::string> ps;     // 8 letters each, in turn
    double ps_s = 8;                 // how long each is sent
    std::vector<std::string> texts;  // radio texts, in turn; each changes the A/B flag
    double text_s = 30;
    TextEnd textEnd = TextEnd::kReturn;
    bool versionB = false;  // 0B and 2B: the PI once more instead of alternatives, and texts of 32 letters
    std::vector<TextTag> tags;
    std::string ptyName;
    std::string longPs;
    double tuned_MHz = 0;  // where the station itself is; needed for alternatives by method B
    std::vector<double> alternatives_MHz;
    bool methodB = false;
    std::optional<ClockTime> clock;
    std::optional<std::uint8_t> extendedCountry;
    std::vector<OtherNetwork> others;
};

// The code of a frequency in a list of alternatives: 1 is 87.6 MHz, 204 is 107.9 MHz.
[[nodiscard]] std::uint8_t FrequencyCode(double frequency_MHz);

// Half of the groups name the station, most of the rest carry the radio text, one in eight something else; a
// clock time goes out as its minute begins.
class CGroupScheduler {
  public:
    explicit CGroupScheduler(StationTexts texts);

    Group Next();

    // What is changed here is sent from the next group on.
    StationTexts& Texts() { return texts_; }
    static GroupSource Source(StationTexts texts);

  private:
    using Builder = Group (CGroupScheduler::*)();

    Group Named();
    Group Text();
    Group Rare();
    Group Clock();
    Group Country();
    Group TextPlusAnnouncement();
    Group TextPlus();
    Group TypeName();
    Group LongName();
    Group Other();
    bool ClockIsDue();
    std::uint16_t SecondBlock(int type, int lowBits) const;
    std::pair<std::uint8_t, std::uint8_t> NextAlternatives();
    double Now_s() const;

    StationTexts texts_;
    std::vector<Builder> rare_;
    long long sent_ = 0;
    std::size_t nextRare_ = 0;
    int nameSegment_ = 0;
    std::size_t name_ = 0;
    std::size_t text_ = 0;
    std::size_t textSegment_ = 0;
    bool textFlag_ = false;
    std::size_t alternative_ = 0;
    int typeNameSegment_ = 0;
    int longNameSegment_ = 0;
    int otherStep_ = 0;
    long minutesTold_ = 0;
};

}  // namespace transmitter
