#include "tests/bench/ether/tone_file.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace bench {
namespace {

constexpr std::uint32_t kPart_bytes = 1 << 17;
constexpr std::uint32_t kFormat_bytes = 16;
// A recording fades in over its first block of sound, so that it begins without a click, and its filter
// begins in silence.
constexpr double kFadeIn_s = 0.04;

std::uint32_t Number(const std::uint8_t* at, std::size_t bytes) {
    std::uint32_t number = 0;
    for (std::size_t i = bytes; i-- > 0;) number = number << 8 | at[i];
    return number;
}

bool Read(std::istream* wav, std::uint8_t* bytes, std::size_t count) {
    return static_cast<bool>(wav->read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count)));
}

struct Format {
    std::uint32_t channels = 0;
    std::uint32_t rate_Hz = 0;
    std::uint32_t bits = 0;
};

ToneRecord Watch(std::istream* wav, std::uint32_t size, const Format& format, double tone_Hz) {
    CToneWatch watch(format.rate_Hz, tone_Hz);
    const std::uint32_t frame_bytes = 2 * format.channels;
    const std::uint32_t fadeIn_bytes =
        std::min(size, static_cast<std::uint32_t>(kFadeIn_s * format.rate_Hz) * frame_bytes);
    wav->ignore(fadeIn_bytes);
    size -= fadeIn_bytes;
    std::vector<std::uint8_t> bytes(kPart_bytes - kPart_bytes % frame_bytes);
    std::vector<std::int16_t> samples;
    while (size >= frame_bytes) {
        wav->read(reinterpret_cast<char*>(bytes.data()),
                  std::min(size, static_cast<std::uint32_t>(bytes.size())));
        const auto read = static_cast<std::uint32_t>(wav->gcount());
        if (read < frame_bytes) break;
        size -= read;
        samples.resize(read / 2);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<std::int16_t>(Number(&bytes[2 * i], 2));
        watch.Add(samples.data(), read / frame_bytes, format.channels);
    }
    ToneRecord record = watch.Record();
    record.seconds += kFadeIn_s;
    for (auto* flaws : {&record.clicksAt, &record.breaksAt}) {
        for (ToneFlaw& flaw : *flaws) flaw.at_s += kFadeIn_s;
    }
    return record;
}

}  // namespace

std::optional<ToneRecord> WatchFile(std::istream* wav, double tone_Hz) {
    std::array<std::uint8_t, 12> riff{};
    if (!Read(wav, riff.data(), riff.size()) || std::memcmp(riff.data(), "RIFF", 4) != 0 ||
        std::memcmp(&riff[8], "WAVE", 4) != 0)
        return std::nullopt;
    std::optional<Format> format;
    // What a recording says of itself stands between the format and the sound.
    for (std::array<std::uint8_t, 8> head{}; Read(wav, head.data(), head.size());) {
        std::uint32_t size = Number(&head[4], 4);
        if (std::memcmp(head.data(), "data", 4) == 0) {
            const bool fits = format && format->bits == 16 && format->channels > 0 && format->rate_Hz > 0;
            return fits ? std::optional(Watch(wav, size, *format, tone_Hz)) : std::nullopt;
        }
        if (std::memcmp(head.data(), "fmt ", 4) == 0 && size >= kFormat_bytes) {
            std::array<std::uint8_t, kFormat_bytes> bytes{};
            if (!Read(wav, bytes.data(), bytes.size())) return std::nullopt;
            format = Format{Number(&bytes[2], 2), Number(&bytes[4], 4), Number(&bytes[14], 2)};
            size -= kFormat_bytes;
        }
        wav->ignore(static_cast<std::streamsize>(size) + (size & 1));
    }
    return std::nullopt;
}

}  // namespace bench
