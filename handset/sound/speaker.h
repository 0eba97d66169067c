// The host's loudspeakers, when it has any. Used by the sound thread alone; whatever fails is silent.
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <array>
#include <cstdint>

#include "handset/sound/format.h"

namespace sound {

class CSpeaker {
  public:
    CSpeaker() = default;
    ~CSpeaker() { Close(); }
    CSpeaker(const CSpeaker&) = delete;
    CSpeaker& operator=(const CSpeaker&) = delete;

    // True when it is open now.
    [[nodiscard]] bool Open();
    void Close();
    bool IsOpen() const { return device_ != nullptr; }
    // Plays one block of kBlockFrames frames after those before it; a block that finds no room is dropped.
    void Play(const std::int16_t* samples);

  private:
    struct Buffer {
        WAVEHDR header{};
        std::array<std::int16_t, kBlockFrames * kChannels> samples{};
    };
    // 160 ms: room for the sound thread to be late.
    static constexpr std::size_t kBuffers = 8;

    HWAVEOUT device_ = nullptr;
    std::array<Buffer, kBuffers> buffers_;
};

}  // namespace sound
