// A WAV file as a programme, over and over.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

#include "handset/transmitter/sampled_programme.h"
#include "handset/transmitter/windowed_sinc.h"

namespace transmitter {
namespace {

struct Wav {
    double rate_Hz = 0;
    std::size_t channels = 0;
    std::vector<Sound> sounds;
};

std::uint32_t Number(const std::vector<std::uint8_t>& bytes, std::size_t at, int size) {
    std::uint32_t number = 0;
    for (int i = size - 1; i >= 0; --i) number = number << 8 | bytes[at + static_cast<std::size_t>(i)];
    return number;
}

bool IsChunk(const std::vector<std::uint8_t>& bytes, std::size_t at, const char* name) {
    return std::memcmp(&bytes[at], name, 4) == 0;
}

const char* ReadFormat(const std::vector<std::uint8_t>& bytes, std::size_t at, std::size_t size, Wav* wav) {
    if (size < 16) return "its format chunk is too short";
    constexpr std::uint32_t kPcm = 1, kExtensible = 0xFFFE;
    const std::uint32_t kind = Number(bytes, at, 2);
    if ((kind != kPcm && kind != kExtensible) || Number(bytes, at + 14, 2) != 16)
        return "it is not PCM of 16 bits";
    wav->channels = Number(bytes, at + 2, 2);
    wav->rate_Hz = Number(bytes, at + 4, 4);
    if (wav->channels < 1 || wav->channels > 2) return "it has neither one nor two channels";
    if (wav->rate_Hz < 1000 || wav->rate_Hz > 768000) return "its rate is out of bounds";
    return nullptr;
}

void ReadSounds(const std::vector<std::uint8_t>& bytes, std::size_t at, std::size_t size, Wav* wav) {
    const std::size_t frame = 2 * wav->channels;
    const auto part = [&](std::size_t place) {
        return static_cast<std::int16_t>(Number(bytes, place, 2)) / 32768.0;
    };
    for (std::size_t end = at + size / frame * frame; at < end; at += frame) {
        const double left = part(at);
        wav->sounds.push_back({left, wav->channels == 2 ? part(at + 2) : left});
    }
}

const char* ReadWav(const std::vector<std::uint8_t>& bytes, Wav* wav) {
    if (bytes.size() < 12 || !IsChunk(bytes, 0, "RIFF") || !IsChunk(bytes, 8, "WAVE"))
        return "it is no WAV file";
    for (std::size_t at = 12; at + 8 <= bytes.size();) {
        const std::size_t begin = at + 8;
        const std::size_t size = std::min<std::size_t>(Number(bytes, at + 4, 4), bytes.size() - begin);
        if (IsChunk(bytes, at, "fmt ")) {
            if (const char* fault = ReadFormat(bytes, begin, size, wav)) return fault;
        } else if (IsChunk(bytes, at, "data")) {
            if (wav->channels == 0) return "its sound comes before its format";
            ReadSounds(bytes, begin, size, wav);
            return wav->sounds.empty() ? "it holds no sound" : nullptr;
        }
        at = begin + size + size % 2;
    }
    return "it holds no sound";
}

// The file at the studio's rate: each sample weighs all of the file's under a low-pass, which goes round at
// the end.
std::vector<Sound> AtStudioRate(const Wav& wav) {
    if (wav.rate_Hz == kStudioRate_Hz) return wav.sounds;
    const double half_Hz = std::min(wav.rate_Hz, kStudioRate_Hz) / 2;
    const CWindowedSinc filter(0.85 * half_Hz, half_Hz, 100);
    const auto length = static_cast<std::size_t>(
        std::max(1.0, std::floor(static_cast<double>(wav.sounds.size()) * kStudioRate_Hz / wav.rate_Hz)));
    const auto count = static_cast<long>(wav.sounds.size());
    std::vector<Sound> result(length);
    for (std::size_t i = 0; i < length; ++i) {
        const double time_s = static_cast<double>(i) / kStudioRate_Hz;
        const auto first = static_cast<long>(std::ceil((time_s - filter.Reach_s()) * wav.rate_Hz));
        const auto last = static_cast<long>(std::floor((time_s + filter.Reach_s()) * wav.rate_Hz));
        for (long k = first; k <= last; ++k) {
            const double weight = filter.At(time_s - static_cast<double>(k) / wav.rate_Hz) / wav.rate_Hz;
            const Sound& sound = wav.sounds[static_cast<std::size_t>(((k % count) + count) % count)];
            result[i].left += weight * sound.left;
            result[i].right += weight * sound.right;
        }
    }
    return result;
}

}  // namespace

SoundSource WavLoop(const std::vector<std::uint8_t>& bytes, std::string* fault) {
    Wav wav;
    if (const char* why = ReadWav(bytes, &wav)) {
        *fault = why;
        return nullptr;
    }
    fault->clear();
    auto sounds = std::make_shared<std::vector<Sound>>(AtStudioRate(wav));
    return [sounds, next = std::size_t{0}]() mutable { return (*sounds)[next++ % sounds->size()]; };
}

}  // namespace transmitter
