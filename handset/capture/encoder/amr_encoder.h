// Speech at 8 kHz into AMR frames at 12.2 kbit/s. Portable; one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "handset/capture/encoder/amr_frames.h"

namespace capture {

class CAmrEncoder {
  public:
    CAmrEncoder();

    // False when there was no memory for the codec.
    explicit operator bool() const { return codec_ != nullptr; }
    // Adds samples and appends the frames that they complete, in the storage form.
    void Encode(const std::int16_t* samples, std::size_t count, std::vector<std::uint8_t>* frames);
    // Samples of a frame that is not complete.
    std::size_t Rest() const { return rest_.size(); }
    // Fills the last frame up with silence, if one was begun.
    void Flush(std::vector<std::uint8_t>* frames);

  private:
    struct CodecCloser {
        void operator()(void* codec) const;
    };
    void EncodeFrame(const std::int16_t* samples, std::vector<std::uint8_t>* frames);

    std::unique_ptr<void, CodecCloser> codec_;
    std::vector<std::int16_t> rest_;
};

}  // namespace capture
