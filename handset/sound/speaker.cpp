// The host's loudspeakers through waveOut.
#include "handset/sound/speaker.h"

#include <algorithm>

namespace sound {

bool CSpeaker::Open() {
    if (device_ != nullptr) return true;
    if (waveOutGetNumDevs() == 0) return false;
    WAVEFORMATEX format{};
    format.wFormatTag = WAVE_FORMAT_PCM;
    format.nChannels = kChannels;
    format.nSamplesPerSec = kSampleRate_Hz;
    format.wBitsPerSample = 16;
    format.nBlockAlign = kFrameBytes;
    format.nAvgBytesPerSec = kSampleRate_Hz * kFrameBytes;
    if (waveOutOpen(&device_, WAVE_MAPPER, &format, 0, 0, CALLBACK_NULL) != MMSYSERR_NOERROR) {
        device_ = nullptr;
        return false;
    }
    for (Buffer& buffer : buffers_) {
        buffer.header = {};
        buffer.header.lpData = reinterpret_cast<LPSTR>(buffer.samples.data());
        buffer.header.dwBufferLength = sizeof buffer.samples;
        waveOutPrepareHeader(device_, &buffer.header, sizeof buffer.header);
        buffer.header.dwFlags |= WHDR_DONE;
    }
    return true;
}

void CSpeaker::Close() {
    if (device_ == nullptr) return;
    waveOutReset(device_);
    for (Buffer& buffer : buffers_) waveOutUnprepareHeader(device_, &buffer.header, sizeof buffer.header);
    waveOutClose(device_);
    device_ = nullptr;
}

void CSpeaker::Play(const std::int16_t* samples) {
    if (device_ == nullptr) return;
    const auto free = std::find_if(buffers_.begin(), buffers_.end(), [](const Buffer& buffer) {
        return (buffer.header.dwFlags & WHDR_DONE) != 0;
    });
    if (free == buffers_.end()) return;
    std::copy_n(samples, free->samples.size(), free->samples.begin());
    free->header.dwFlags &= ~static_cast<DWORD>(WHDR_DONE);
    if (waveOutWrite(device_, &free->header, sizeof free->header) != MMSYSERR_NOERROR)
        free->header.dwFlags |= WHDR_DONE;
}

}  // namespace sound
