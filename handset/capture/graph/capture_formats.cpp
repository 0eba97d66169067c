// The table of formats.
#include "handset/capture/graph/capture_formats.h"

#include <algorithm>

namespace capture {
namespace {

constexpr WORD kBits = 16;

// A client that finds nothing to its liking goes on with the last one: the smallest.
constexpr struct {
    DWORD rate_Hz;
    WORD channels;
} kFormats[] = {
    {44100, 2}, {44100, 1}, {22050, 2}, {22050, 1}, {11025, 2}, {11025, 1}, {8000, 2}, {8000, 1},
};

}  // namespace

int CaptureFormatCount() {
    return static_cast<int>(std::size(kFormats));
}

CMediaType CaptureFormatType(int index) {
    WAVEFORMATEX format{};
    format.wFormatTag = WAVE_FORMAT_PCM;
    format.nChannels = kFormats[index].channels;
    format.nSamplesPerSec = kFormats[index].rate_Hz;
    format.wBitsPerSample = kBits;
    format.nBlockAlign = static_cast<WORD>(format.nChannels * kBits / 8);
    format.nAvgBytesPerSec = format.nSamplesPerSec * format.nBlockAlign;
    return CMediaType(MEDIASUBTYPE_PCM, format);
}

AUDIO_STREAM_CONFIG_CAPS CaptureFormatCaps(int index) {
    AUDIO_STREAM_CONFIG_CAPS caps{};
    caps.guid = MEDIATYPE_Audio;
    caps.MinimumChannels = caps.MaximumChannels = kFormats[index].channels;
    caps.MinimumBitsPerSample = caps.MaximumBitsPerSample = kBits;
    caps.MinimumSampleFrequency = caps.MaximumSampleFrequency = kFormats[index].rate_Hz;
    return caps;
}

std::optional<sound::WavShape> PcmShape(const CMediaType& type) {
    const WAVEFORMATEX* wave = type.Wave();
    if (type.Major() != MEDIATYPE_Audio || type.Subtype() != MEDIASUBTYPE_PCM || wave == nullptr)
        return std::nullopt;
    const sound::WavShape shape{wave->nSamplesPerSec, wave->nChannels,
                                wave->wBitsPerSample == 0 ? kBits : wave->wBitsPerSample};
    const bool usable = wave->wFormatTag == WAVE_FORMAT_PCM && shape.rate_Hz != 0 &&
                        (shape.channels == 1 || shape.channels == 2) && (shape.bits == 8 || shape.bits == 16);
    return usable ? std::make_optional(shape) : std::nullopt;
}

bool CanCapture(const sound::WavShape& shape) {
    return shape.bits == kBits &&
           std::any_of(std::begin(kFormats), std::end(kFormats), [&](const auto& format) {
               return format.rate_Hz == shape.rate_Hz && format.channels == shape.channels;
           });
}

}  // namespace capture
