// The parts of a 3GPP file (TS 26.244 over ISO 14496-12) with one track of AMR frames: the header, the movie
// box in its two forms, and the head of a fragment. Portable.
#pragma once

#include <cstdint>
#include <vector>

#include "handset/capture/files/mp4_boxes.h"
#include "handset/capture/files/recording_tags.h"

namespace capture {

// Frames that lie in the file one after another.
struct Mp4Chunk {
    std::uint64_t offset;
    std::uint32_t frames;
};

// What the file holds: a fragment's worth, or all of it.
struct Mp4Samples {
    std::vector<std::uint8_t> frame_bytes;  // the length of each frame
    std::vector<Mp4Chunk> chunks;

    // The length that all of them have; 0 when they differ or there is none.
    std::uint32_t CommonLength() const;
};

// File type, and behind it a "free" box of kPlaceholder_bytes at kPlaceholderOffset.
CBoxBytes Mp4FileType();
inline constexpr std::uint64_t kPlaceholderOffset = 28;
inline constexpr std::uint64_t kPlaceholder_bytes = 16;
// What takes the placeholder's place when the file is complete: the beginning of one box of media data that
// ends at `end` and hides all that the file needed while it was written.
CBoxBytes Mp4MediaDataHeader(std::uint64_t end);

// The movie of a file whose frames come in fragments. `created`: seconds since 1904, UTC.
CBoxBytes Mp4FragmentedMovie(std::uint32_t created, const RecordingTags& tags);
// The movie of a complete file.
CBoxBytes Mp4CompleteMovie(std::uint32_t created, const Mp4Samples& samples, const RecordingTags& tags);

// What stands before a fragment's frames: its movie fragment box and the head of its media data box.
// `offset`: where it will lie in the file; `sequence`: 1, 2 …; `before`: the frames in the fragments before
// it.
CBoxBytes Mp4FragmentHead(std::uint64_t offset, std::uint32_t sequence, std::uint64_t before,
                          const std::vector<std::uint8_t>& frame_bytes);

}  // namespace capture
