// Loudness by root mean square, tone by a Fourier transform with a Hann window.
#include "handset/panel/sound_analysis.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstring>

namespace panel {
namespace {

using Spectrum = std::vector<std::complex<double>>;

constexpr double kPi = 3.14159265358979323846;
constexpr double kLowestTone_Hz = 40;  // below it lies what the window leaves of a constant offset

template <typename T>
T Field(const std::string& bytes, std::size_t offset) {
    T value{};
    if (offset + sizeof value <= bytes.size()) std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

// Radix 2, in place; the size is a power of two.
void Transform(Spectrum& values) {
    const std::size_t n = values.size();
    for (std::size_t i = 1, j = 0; i < n; ++i) {
        std::size_t bit = n >> 1;
        for (; (j & bit) != 0; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(values[i], values[j]);
    }
    for (std::size_t length = 2; length <= n; length <<= 1) {
        const std::complex<double> step = std::polar(1.0, -2 * kPi / static_cast<double>(length));
        for (std::size_t start = 0; start < n; start += length) {
            std::complex<double> turn = 1;
            for (std::size_t k = 0; k < length / 2; ++k, turn *= step) {
                const auto even = values[start + k];
                const auto odd = values[start + k + length / 2] * turn;
                values[start + k] = even + odd;
                values[start + k + length / 2] = even - odd;
            }
        }
    }
}

// Between the strongest line and its neighbours lies the tone: the vertex of a parabola through the three.
double Vertex(double before, double peak, double after) {
    const double curve = before - 2 * peak + after;
    return curve == 0 ? 0 : 0.5 * (before - after) / curve;
}

void FindTone(const double* samples, std::size_t count, std::uint32_t rate, Hearing& hearing) {
    std::size_t size = 1;
    while (size * 2 <= count) size *= 2;
    if (size < 64) return;
    Spectrum spectrum(size);
    for (std::size_t i = 0; i < size; ++i) {
        const double window =
            0.5 - 0.5 * std::cos(2 * kPi * static_cast<double>(i) / static_cast<double>(size));
        spectrum[i] = samples[count - size + i] * window;
    }
    Transform(spectrum);
    const double line_Hz = static_cast<double>(rate) / static_cast<double>(size);
    const std::size_t first = std::max<std::size_t>(2, static_cast<std::size_t>(kLowestTone_Hz / line_Hz));
    std::size_t best = first;
    double sum = 0;
    for (std::size_t i = first; i + 1 < size / 2; ++i) {
        sum += std::norm(spectrum[i]);
        if (std::norm(spectrum[i]) > std::norm(spectrum[best])) best = i;
    }
    const double mean = sum / static_cast<double>(size / 2 - first);
    if (mean <= 0) return;
    const auto level = [&](std::size_t i) { return std::log(std::norm(spectrum[i]) + 1e-300); };
    const double offset = Vertex(level(best - 1), level(best), level(best + 1));
    hearing.tone_Hz = (static_cast<double>(best) + offset) * line_Hz;
    hearing.prominence_dB = 10 * std::log10(std::norm(spectrum[best]) / mean);
}

}  // namespace

std::optional<WavSound> ReadWav(const std::string& bytes) {
    if (bytes.compare(0, 4, "RIFF") != 0 || bytes.size() < 12 || bytes.compare(8, 4, "WAVE") != 0) {
        return std::nullopt;
    }
    WavSound sound{};
    std::size_t channels = 0;
    for (std::size_t at = 12; at + 8 <= bytes.size();) {
        const std::size_t size = Field<std::uint32_t>(bytes, at + 4);
        if (bytes.compare(at, 4, "fmt ") == 0) {
            if (Field<std::uint16_t>(bytes, at + 8) != 1 || Field<std::uint16_t>(bytes, at + 22) != 16) {
                return std::nullopt;
            }
            channels = Field<std::uint16_t>(bytes, at + 10);
            sound.rate = Field<std::uint32_t>(bytes, at + 12);
            sound.frameBytes = static_cast<std::uint32_t>(2 * channels);
        }
        if (bytes.compare(at, 4, "data") == 0) {
            if (channels == 0 || sound.rate == 0) return std::nullopt;
            for (std::size_t frame = at + 8; frame + 2 * channels <= bytes.size(); frame += 2 * channels) {
                double sum = 0;
                for (std::size_t c = 0; c < channels; ++c) sum += Field<std::int16_t>(bytes, frame + 2 * c);
                sound.samples.push_back(sum / static_cast<double>(channels) / 32768);
            }
            return sound;
        }
        at += 8 + size + (size & 1);
    }
    return std::nullopt;
}

Hearing Listen(const WavSound& sound, double seconds) {
    Hearing hearing{kSilence_dBFS, 0, 0};
    const std::size_t wanted = static_cast<std::size_t>(seconds * sound.rate);
    const std::size_t count = std::min(wanted, sound.samples.size());
    if (count == 0) return hearing;
    const double* samples = sound.samples.data() + sound.samples.size() - count;
    double sum = 0;
    for (std::size_t i = 0; i < count; ++i) sum += samples[i] * samples[i];
    const double rms = std::sqrt(sum / static_cast<double>(count));
    if (rms <= 1e-6) return hearing;
    hearing.loudness_dBFS = 20 * std::log10(rms);
    FindTone(samples, count, sound.rate, hearing);
    return hearing;
}

}  // namespace panel
