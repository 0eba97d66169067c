// Loudness by root mean square, tone by a Fourier transform with a Hann window.
#include "handset/sound/analysis.h"

#include <kiss_fft.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <memory>
#include <type_traits>
#include <vector>

namespace sound {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kLowestTone_Hz = 40;  // below it lies what the window leaves of a constant offset

using Line = std::complex<float>;

// The lower half of the spectrum of real samples; their number is a power of two.
std::vector<double> Powers(const std::vector<float>& samples) {
    static_assert(sizeof(kiss_fft_cpx) == sizeof(Line), "both are two floats");
    const std::vector<Line> input(samples.begin(), samples.end());
    std::vector<Line> lines(input.size());
    const std::unique_ptr<std::remove_pointer_t<kiss_fft_cfg>, void (*)(void*)> plan(
        kiss_fft_alloc(static_cast<int>(input.size()), 0, nullptr, nullptr), std::free);
    kiss_fft(plan.get(), reinterpret_cast<const kiss_fft_cpx*>(input.data()),
             reinterpret_cast<kiss_fft_cpx*>(lines.data()));
    std::vector<double> powers(lines.size() / 2);
    for (std::size_t i = 0; i < powers.size(); ++i) powers[i] = std::norm(std::complex<double>(lines[i]));
    return powers;
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
    std::vector<float> windowed(size);
    for (std::size_t i = 0; i < size; ++i) {
        const double window =
            0.5 - 0.5 * std::cos(2 * kPi * static_cast<double>(i) / static_cast<double>(size));
        windowed[i] = static_cast<float>(samples[count - size + i] * window);
    }
    const std::vector<double> powers = Powers(windowed);
    const double line_Hz = static_cast<double>(rate) / static_cast<double>(size);
    const std::size_t first = std::max<std::size_t>(2, static_cast<std::size_t>(kLowestTone_Hz / line_Hz));
    std::size_t best = first;
    double sum = 0;
    for (std::size_t i = first; i + 1 < size / 2; ++i) {
        sum += powers[i];
        if (powers[i] > powers[best]) best = i;
    }
    const double mean = sum / static_cast<double>(size / 2 - first);
    if (mean <= 0) return;
    const auto level = [&](std::size_t i) { return std::log(powers[i] + 1e-300); };
    const double offset = Vertex(level(best - 1), level(best), level(best + 1));
    hearing.tone_Hz = (static_cast<double>(best) + offset) * line_Hz;
    hearing.prominence_dB = 10 * std::log10(powers[best] / mean);
}

}  // namespace

Hearing Listen(const WavSound& sound, double seconds) {
    Hearing hearing{kSilence_dBFS, 0, 0};
    if (sound.samples.empty()) return hearing;
    const std::vector<double> mono = Mono(sound);
    const std::size_t count = std::min(static_cast<std::size_t>(seconds * sound.rate_Hz), mono.size());
    const double* const samples = mono.data() + mono.size() - count;
    double sum = 0;
    for (std::size_t i = 0; i < count; ++i) sum += samples[i] * samples[i];
    const double rms = std::sqrt(sum / static_cast<double>(count));
    if (rms <= 1e-6) return hearing;
    hearing.loudness_dBFS = 20 * std::log10(rms);
    FindTone(samples, count, sound.rate_Hz, hearing);
    return hearing;
}

}  // namespace sound
