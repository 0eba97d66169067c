// What a recording's file tells of the sound in it: its length, its tags. Whole files, and those whose writer
// was killed. Portable.
#pragma once

#include <cstdint>
#include <optional>

#include "handset/capture/files/recording_tags.h"

namespace capture {

// A file that is read at chosen places.
class IFileBytes {
  public:
    virtual ~IFileBytes() = default;
    virtual std::uint64_t Size() const = 0;
    // All of it, or false.
    [[nodiscard]] virtual bool ReadAt(std::uint64_t offset, void* data, std::size_t size) = 0;
};

struct RecordingFacts {
    const char* kind = "";  // "AMR" or "WAV"
    double length_s = 0;
    RecordingTags tags;
};

// Nothing for a file that is none of the recorder's kinds.
std::optional<RecordingFacts> ReadFacts(IFileBytes& file);

}  // namespace capture
