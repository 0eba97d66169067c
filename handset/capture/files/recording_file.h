// What a recording is written to and by. Portable. One thread at a time is inside.
#pragma once

#include <cstddef>
#include <cstdint>

#include "handset/capture/files/recording_tags.h"

namespace capture {

// A file that is written at chosen places.
class IRecordingFile {
  public:
    virtual ~IRecordingFile() = default;
    // Writes all of it at once, or gives false: then any part of it may have been written.
    [[nodiscard]] virtual bool WriteAt(std::uint64_t offset, const void* data, std::size_t size) = 0;
    // Cuts the file off.
    virtual void Truncate(std::uint64_t size) = 0;
};

// One container format. A file plays at every moment up to what was written half a second of sound before.
class IRecordingWriter {
  public:
    virtual ~IRecordingWriter() = default;
    // What the file says of itself: given before Begin, so that one that is cut off says it, too; again
    // before Finish where more is known by then. Without it a file says nothing.
    virtual void Tag(const RecordingTags& tags) = 0;
    // The start of the file, which is empty.
    [[nodiscard]] virtual bool Begin(IRecordingFile* file) = 0;
    // Adds whole frames. False: it could not be written; what was written before is whole, and only Finish
    // may follow.
    [[nodiscard]] virtual bool Write(const std::uint8_t* data, std::size_t size) = 0;
    // The end. False: what could be saved plays, but it is not all.
    [[nodiscard]] virtual bool Finish() = 0;
};

}  // namespace capture
