// What a recording says of itself, as players show it: in an MP4-style file the metadata list of the movie,
// in a WAV file the INFO list. Portable; texts in UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "handset/capture/files/mp4_boxes.h"

namespace capture {

// An empty text is left out of the file.
struct RecordingTags {
    std::string title;      // the channel or the station
    std::string station;    // as it names itself
    std::string frequency;  // "98.5 MHz"
    std::string date;       // "2026-11-23T09:58:00", when the recording began

    bool Empty() const { return title.empty() && station.empty() && frequency.empty() && date.empty(); }
};

// Under which names they stand in the two kinds of file.
struct TagName {
    const char* mp4;
    const char* wav;
    std::string RecordingTags::*text;
};
// clang-format off
inline constexpr TagName kTagNames[] = {
    {"\xA9" "nam", "INAM", &RecordingTags::title},
    {"\xA9" "ART", "IART", &RecordingTags::station},
    {"\xA9" "day", "ICRD", &RecordingTags::date},
    {"\xA9" "cmt", "ICMT", &RecordingTags::frequency},
};
// clang-format on

// What was tuned; channel 0: not known.
struct TunedTo {
    std::uint32_t channel_10kHz = 0;
    std::string station;
};

// A recording with an automatic name is called after its channel, with a number behind it; the channel is the
// title, unless the name is the frequency alone. Any other is titled by the station, or by the frequency.
// `path`: its name.
RecordingTags TagsOf(const std::string& path, const TunedTo& tuned, const std::string& date);

// A user data box with the list; nothing when there are no tags.
void AppendMp4Tags(CBoxBytes* out, const RecordingTags& tags);

// Chunks of exactly kWavTags_bytes for between the format and the sound, filled up with one that players pass
// over. A text that does not fit is cut off.
inline constexpr std::size_t kWavTags_bytes = 1024;
std::vector<std::uint8_t> WavTags(const RecordingTags& tags);

}  // namespace capture
