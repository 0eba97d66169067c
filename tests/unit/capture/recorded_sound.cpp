// Reading and measuring a WAV file.
#include "tests/unit/capture/recorded_sound.h"

#include <cmath>
#include <cstring>

#include "handset/capture/files/recording_tags.h"

namespace test {
namespace {

constexpr double kTwoPi = 6.28318530717958647692;

template <typename Number>
Number At(const std::string& bytes, std::size_t offset) {
    Number value{};
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

}  // namespace

RecordedSound ReadWav(const std::string& bytes) {
    RecordedSound sound;
    // The format, what the file says of itself, the sound.
    constexpr std::size_t kData = 36 + capture::kWavTags_bytes, kSound = kData + 8;
    if (bytes.size() < kSound || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 8, "WAVEfmt ") != 0 ||
        bytes.compare(36, 4, "LIST") != 0 || bytes.compare(kData, 4, "data") != 0)
        return sound;
    sound.channels = At<std::uint16_t>(bytes, 22);
    sound.rate_Hz = At<std::uint32_t>(bytes, 24);
    sound.bits = At<std::uint16_t>(bytes, 34);
    const auto data = At<std::uint32_t>(bytes, kData + 4);
    const std::uint32_t frame = sound.channels * sound.bits / 8u;
    sound.whole = At<std::uint16_t>(bytes, 20) == 1 && At<std::uint32_t>(bytes, 4) == data + kSound - 8 &&
                  At<std::uint32_t>(bytes, 28) == sound.rate_Hz * frame &&
                  At<std::uint16_t>(bytes, 32) == frame && bytes.size() == data + kSound;
    sound.samples.resize((bytes.size() - kSound) / 2);
    bytes.copy(reinterpret_cast<char*>(sound.samples.data()), sound.samples.size() * 2, kSound);
    return sound;
}

double RecordedSound::Tone(double frequency_Hz, std::size_t channel) const {
    double real = 0;
    double imaginary = 0;
    for (std::size_t i = 0; i < Frames(); ++i) {
        const double angle = kTwoPi * frequency_Hz * static_cast<double>(i) / rate_Hz;
        real += samples[i * channels + channel] * std::cos(angle);
        imaginary += samples[i * channels + channel] * std::sin(angle);
    }
    return 2 * std::hypot(real, imaginary) / static_cast<double>(Frames()) / 32768;
}

double RecordedSound::Loudness() const {
    double sum = 0;
    for (const std::int16_t sample : samples) sum += static_cast<double>(sample) * sample;
    return std::sqrt(sum / static_cast<double>(samples.size())) / 32768;
}

double RecordedSound::Pitch_Hz() const {
    double best = 440;
    for (const double step : {4.0, 1.0, 0.125}) {
        const double middle = best;
        double loudest = 0;
        for (int i = -10; i <= 10; ++i) {
            const double peak = Tone(middle + i * step);
            if (peak <= loudest) continue;
            loudest = peak;
            best = middle + i * step;
        }
    }
    return best;
}

}  // namespace test
