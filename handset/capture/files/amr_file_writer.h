// The multiplexer's file: AMR frames in a 3GPP file. While it is written it is a fragmented one, which plays
// up to its last fragment of half a second; when it is complete one movie box at its end lists all frames,
// and the fragments' boxes disappear inside a single box of media data. Portable.
#pragma once

#include "handset/capture/files/mp4_movie.h"
#include "handset/capture/files/recording_file.h"

namespace capture {

class CAmrFileWriter final : public IRecordingWriter {
  public:
    // `created`: seconds since 1904, UTC.
    explicit CAmrFileWriter(std::uint32_t created) : created_(created) {}

    void Tag(const RecordingTags& tags) override { tags_ = tags; }
    bool Begin(IRecordingFile* file) override;
    // Bytes that are no frames are refused.
    bool Write(const std::uint8_t* data, std::size_t size) override;
    bool Finish() override;

  private:
    bool Append(const std::vector<std::uint8_t>& bytes);
    bool WriteFragment();

    const std::uint32_t created_;
    RecordingTags tags_;
    IRecordingFile* file_ = nullptr;
    std::uint64_t end_ = 0;              // of what is written whole
    std::vector<std::uint8_t> pending_;  // frames of the fragment to come
    std::vector<std::uint8_t> lengths_;  // and their lengths
    Mp4Samples written_;
    bool failed_ = false;
};

}  // namespace capture
