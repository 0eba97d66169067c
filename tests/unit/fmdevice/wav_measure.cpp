// Measures sound: how loud, and how much of a tone.
#include "tests/unit/fmdevice/wav_measure.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace test {
namespace {

std::uint32_t Number(const std::string& bytes, std::size_t at) {
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

}  // namespace

Sound Sound::Tail(std::size_t frames) const {
    const std::size_t count = std::min(frames, Frames());
    return {{samples.end() - static_cast<std::ptrdiff_t>(2 * count), samples.end()}};
}

double Sound::Rms(std::size_t side) const {
    double sum = 0;
    for (std::size_t i = side; i < samples.size(); i += 2) sum += std::pow(samples[i] / 32768.0, 2);
    return std::sqrt(sum / static_cast<double>(Frames()));
}

double Sound::Tone(std::size_t side, double frequency_Hz) const {
    double real = 0, imaginary = 0;
    for (std::size_t i = 0; i < Frames(); ++i) {
        const double angle = 2 * M_PI * frequency_Hz * static_cast<double>(i) / 44100;
        real += samples[2 * i + side] / 32768.0 * std::cos(angle);
        imaginary += samples[2 * i + side] / 32768.0 * std::sin(angle);
    }
    return 2 * std::hypot(real, imaginary) / static_cast<double>(Frames());
}

Sound WavSound(const std::string& bytes) {
    if (bytes.size() < 44 || bytes.compare(0, 4, "RIFF") != 0 || bytes.compare(8, 8, "WAVEfmt ") != 0)
        return {};
    const bool format = Number(bytes, 16) == 16 && Number(bytes, 20) == 0x20001 &&
                        Number(bytes, 24) == 44100 && Number(bytes, 28) == 176400 &&
                        Number(bytes, 32) == 0x100004;
    const std::uint32_t size = Number(bytes, 40);
    if (!format || bytes.compare(36, 4, "data") != 0 || size > bytes.size() - 44) return {};
    if (Number(bytes, 4) != size + 36 || size % 4 != 0) return {};
    Sound sound;
    sound.samples.resize(size / 2);
    bytes.copy(reinterpret_cast<char*>(sound.samples.data()), size, 44);
    return sound;
}

}  // namespace test
