#include "handset/sound/wav.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace sound {
namespace {

constexpr std::uint16_t kFormatPcm = 1;
constexpr std::uint16_t kFormatExtensible = 0xFFFE;
constexpr std::size_t kFormatBytes = 16;
// In the extensible form the sub-format's first two bytes say what the format tag says otherwise.
constexpr std::size_t kSubFormatOffset = 24;

std::uint16_t Word(const std::uint8_t* at) {
    return static_cast<std::uint16_t>(at[0] | at[1] << 8);
}

std::uint32_t Dword(const std::uint8_t* at) {
    return Word(at) | static_cast<std::uint32_t>(Word(at + 2)) << 16;
}

struct Chunk {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;
};

Chunk FindChunk(const std::vector<std::uint8_t>& bytes, const char* name, WavEnd end = WavEnd::kAsStated) {
    constexpr std::size_t kRiffHeader = 12;
    constexpr std::size_t kChunkHeader = 8;
    std::size_t at = kRiffHeader;
    while (bytes.size() - at >= kChunkHeader) {
        const std::uint8_t* header = bytes.data() + at;
        at += kChunkHeader;
        const std::size_t size = Dword(header + 4);
        const std::size_t left = bytes.size() - at;
        const std::size_t there = end == WavEnd::kAsStated ? std::min(size, left) : left;
        if (std::memcmp(header, name, 4) == 0) return {bytes.data() + at, there};
        // Chunks begin at even offsets.
        const std::size_t padded = size + (size & 1);
        if (padded > bytes.size() - at) break;
        at += padded;
    }
    return {};
}

}  // namespace

const char* ReadWav(const std::vector<std::uint8_t>& bytes, WavSound* sound, WavEnd end) {
    constexpr std::size_t kSmallest = 12;
    if (bytes.size() < kSmallest || std::memcmp(bytes.data(), "RIFF", 4) != 0 ||
        std::memcmp(bytes.data() + 8, "WAVE", 4) != 0) {
        return "it is not a WAV file";
    }
    const Chunk format = FindChunk(bytes, "fmt ");
    if (format.size < kFormatBytes) return "it does not say its format";
    std::uint16_t tag = Word(format.data);
    if (tag == kFormatExtensible && format.size >= kSubFormatOffset + 2)
        tag = Word(format.data + kSubFormatOffset);
    const std::size_t channels = Word(format.data + 2);
    const std::uint32_t rate = Dword(format.data + 4);
    const std::size_t bits = Word(format.data + 14);
    if (tag != kFormatPcm || (bits != 8 && bits != 16)) return "it is not PCM of 8 or 16 bits";
    if (channels != 1 && channels != 2) return "it has neither one nor two channels";
    if (rate < 1000 || rate > 192000) return "its sample rate is not between 1000 and 192000 Hz";

    const Chunk data = FindChunk(bytes, "data", end);
    const std::size_t samples = data.size / (channels * bits / 8) * channels;
    if (samples == 0) return "there is no sound in it";
    sound->rate_Hz = rate;
    sound->channels = channels;
    sound->samples.resize(samples);
    for (std::size_t i = 0; i < samples; ++i) {
        sound->samples[i] = bits == 8 ? static_cast<std::int16_t>((data.data[i] - 128) * 256)
                                      : static_cast<std::int16_t>(Word(data.data + 2 * i));
    }
    return nullptr;
}

std::vector<double> Mono(const WavSound& sound) {
    std::vector<double> mono(sound.samples.size() / sound.channels);
    for (std::size_t frame = 0; frame < mono.size(); ++frame) {
        double sum = 0;
        for (std::size_t c = 0; c < sound.channels; ++c) sum += sound.samples[frame * sound.channels + c];
        mono[frame] = sum / static_cast<double>(sound.channels) / 32768;
    }
    return mono;
}

std::array<std::uint8_t, kWavHeader_bytes> WavHeader(const WavShape& shape, std::uint32_t dataBytes) {
    std::array<std::uint8_t, kWavHeader_bytes> header{};
    std::size_t at = 0;
    const auto put = [&](std::uint32_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) header[at++] = static_cast<std::uint8_t>(value >> 8 * i);
    };
    const auto name = [&](const char* text) {
        std::memcpy(header.data() + std::exchange(at, at + 4), text, 4);
    };
    name("RIFF");
    put(kWavHeader_bytes - 8 + dataBytes + dataBytes % 2, 4);
    name("WAVE");
    name("fmt ");
    put(kFormatBytes, 4);
    put(kFormatPcm, 2);
    put(shape.channels, 2);
    put(shape.rate_Hz, 4);
    put(shape.rate_Hz * shape.FrameBytes(), 4);
    put(shape.FrameBytes(), 2);
    put(shape.bits, 2);
    name("data");
    put(dataBytes, 4);
    return header;
}

}  // namespace sound
