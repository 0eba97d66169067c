// A WAV file of PCM sound whose sizes are right again after every half second, so that it plays when it is
// cut off. Portable.
#pragma once

#include "handset/capture/files/recording_file.h"
#include "handset/sound/wav.h"

namespace capture {

// The sizes in the header have 32 bits.
inline constexpr std::uint64_t kLargestWav_bytes = 0xFFFFFFFF;

class CWavWriter final : public IRecordingWriter {
  public:
    // A file that would grow beyond `largest` bytes takes no more.
    explicit CWavWriter(const sound::WavShape& shape, std::uint64_t largest = kLargestWav_bytes)
        : shape_(shape), largest_(largest) {}

    void Tag(const RecordingTags& tags) override { tags_ = WavTags(tags); }
    bool Begin(IRecordingFile* file) override;
    bool Write(const std::uint8_t* data, std::size_t size) override;
    bool Finish() override;

  private:
    std::uint64_t SoundBegins() const { return sound::kWavHeader_bytes + std::uint64_t{tags_.size()}; }
    bool WriteHeader();

    const sound::WavShape shape_;
    const std::uint64_t largest_;
    IRecordingFile* file_ = nullptr;
    std::vector<std::uint8_t> tags_;  // between the format and the sound; always of one length
    std::uint32_t data_bytes_ = 0;
    std::uint32_t stated_bytes_ = 0;  // what the header says
};

}  // namespace capture
