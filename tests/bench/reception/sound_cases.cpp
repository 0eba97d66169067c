#include "tests/bench/reception/sound_cases.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdio>
#include <memory>

#include "handset/transmitter/programme.h"
#include "handset/transmitter/station_texts.h"
#include "tests/bench/reception/ideal_limit.h"
#include "tests/bench/reception/listening.h"

namespace bench {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kRate_Hz = 1920000;
// Before the pre-emphasis, which adds 0.4 dB.
constexpr double kToneDeviation_Hz = 57000;
// Until level, pilot and filters have settled.
constexpr double kSettling_s = 1.5;

// The sound of a station from its tones, as deviations of the carrier by each side.
Air ToneAir(const std::vector<transmitter::Tone>& tones, double preEmphasis_s = 50e-6) {
    transmitter::StationTexts texts;
    texts.ps = {"KORA ONE"};
    Air air;
    air.stream.rate_Hz = kRate_Hz;
    air.format.reset();
    air.stations.resize(1);
    air.stations[0].multiplex.programme = std::make_shared<transmitter::CTones>(tones, preEmphasis_s);
    // A tone of 1 on one side is then a deviation of 1 Hz on it.
    air.stations[0].multiplex.programme_Hz = 1;
    air.stations[0].multiplex.rds.groups = transmitter::CGroupScheduler::Source(texts);
    return air;
}

// What a tone of a deviation is before the pre-emphasis.
double Before(double deviation_Hz, double frequency_Hz, double preEmphasis_s = 50e-6) {
    return deviation_Hz / transmitter::EmphasisAt(frequency_Hz, preEmphasis_s).gain;
}

struct Heard {
    std::vector<double> left, right;
};

Heard Listen(const Air& air, double length_s, sdr::DeEmphasis deEmphasis = sdr::DeEmphasis::k50us) {
    CAirStream stream(air);
    sdr::ReceiverOptions options;
    options.rate_Hz = kRate_Hz;
    options.blend = false;
    options.deEmphasis = deEmphasis;
    CListening listening(options);
    constexpr std::size_t kChunk = 96000;
    for (double done = 0; done < (kSettling_s + length_s) * kRate_Hz; done += kChunk) {
        listening.Process(stream.Next(kChunk));
    }
    const std::vector<float>& sound = listening.Sound();
    Heard heard;
    const auto wanted = static_cast<std::size_t>(length_s * sdr::kSoundRate_Hz);
    const std::size_t frames = sound.size() / 2;
    for (std::size_t i = frames - std::min(wanted, frames); i < frames; ++i) {
        heard.left.push_back(sound[2 * i]);
        heard.right.push_back(sound[2 * i + 1]);
    }
    return heard;
}

// The line at a frequency under a window that leaves what is five bins away below -92 dB.
double Size(const std::vector<double>& sound, double frequency_Hz) {
    constexpr double kTerms[] = {0.35875, -0.48829, 0.14128, -0.01168};
    std::complex<double> sum = 0;
    double weight = 0;
    for (std::size_t i = 0; i < sound.size(); ++i) {
        double window = 0;
        const double place = 2 * kPi * static_cast<double>(i) / static_cast<double>(sound.size());
        for (int k = 0; k < 4; ++k) window += kTerms[k] * std::cos(k * place);
        const double turns = std::fmod(frequency_Hz * static_cast<double>(i) / sdr::kSoundRate_Hz, 1.0);
        sum += window * sound[i] * std::polar(1.0, -2 * kPi * turns);
        weight += window;
    }
    return 2 * std::abs(sum) / weight;
}

double Decibel(double ratio) {
    return 20 * std::log10(std::max(ratio, 1e-12));
}

// A sine against all else that is heard, its mean value left out: the best fit of sine, cosine and mean, over
// whole periods.
double Sinad_dB(const std::vector<double>& sound, double frequency_Hz) {
    const auto period = static_cast<std::size_t>(std::lround(sdr::kSoundRate_Hz / frequency_Hz));
    const std::size_t count = sound.size() / period * period;
    double mean = 0, power = 0;
    std::complex<double> line = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double turns = std::fmod(frequency_Hz * static_cast<double>(i) / sdr::kSoundRate_Hz, 1.0);
        line += sound[i] * std::polar(1.0, -2 * kPi * turns);
        mean += sound[i];
    }
    line *= 2.0 / static_cast<double>(count);
    mean /= static_cast<double>(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double turns = std::fmod(frequency_Hz * static_cast<double>(i) / sdr::kSoundRate_Hz, 1.0);
        const double rest = sound[i] - mean - (line * std::polar(1.0, 2 * kPi * turns)).real();
        power += rest * rest / static_cast<double>(count);
    }
    return 10 * std::log10(std::norm(line) / 2 / power);
}

void MeasureNoise(NoiseCase& noise) {
    Air air = ToneAir({{1000, kToneDeviation_Hz, 0}});
    air.stream.carrierToNoise_dBHz = noise.carrierToNoise_dBHz;
    // The de-emphasis takes away from the tone what the pre-emphasis gave it.
    noise.limit_dB = StereoLimit_dB(noise.carrierToNoise_dBHz, kToneDeviation_Hz);
    noise.reached_dB = Sinad_dB(Listen(air, noise.length_s).left, 1000);
}

void MeasureClean(CleanSound& sound) {
    const Heard heard = Listen(ToneAir({{1000, kToneDeviation_Hz, 0}}), 2);
    sound.sinad_dB = Sinad_dB(heard.left, 1000);
    const double tone = Size(heard.left, 1000);
    double harmonics = 0;
    for (int harmonic = 2; harmonic <= 14; ++harmonic)
        harmonics += std::pow(Size(heard.left, 1000.0 * harmonic), 2);
    sound.distortion_dB = Decibel(std::sqrt(harmonics) / tone);
    sound.pilot_dB = Decibel(Size(heard.left, 19000) / tone);
}

// Many tones at once, each far too small to distort.
void MeasureResponse(double preEmphasis_s, sdr::DeEmphasis deEmphasis, double* lowest_dB,
                     double* highest_dB) {
    constexpr double kFrequencies_Hz[] = {30,   50,   100,  200,   400,   700,   1000,  2000, 3180,
                                          5000, 7000, 8500, 10000, 11500, 12500, 13300, 14000};
    std::vector<transmitter::Tone> tones;
    for (const double frequency_Hz : kFrequencies_Hz) {
        const double size = Before(3000, frequency_Hz, preEmphasis_s);
        tones.push_back({frequency_Hz, size, 0.4 * size});
    }
    const Heard heard = Listen(ToneAir(tones, preEmphasis_s), 2, deEmphasis);
    const double reference = Size(heard.left, 1000) / Before(1, 1000, preEmphasis_s);
    *lowest_dB = 1e3, *highest_dB = -1e3;
    for (const double frequency_Hz : kFrequencies_Hz) {
        const double gain_dB =
            Decibel(Size(heard.left, frequency_Hz) / Before(1, frequency_Hz, preEmphasis_s) / reference);
        *lowest_dB = std::min(*lowest_dB, gain_dB);
        *highest_dB = std::max(*highest_dB, gain_dB);
    }
}

std::string Named(const char* format, double value) {
    char text[80];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

}  // namespace

std::vector<NoiseCase> NoiseCases(bool quick) {
    std::vector<NoiseCase> cases;
    for (const double cn : {63.0, 64.0, 65.0, 66.0, 68.0, 70.0, 75.0, 80.0, 85.0, 90.0}) {
        if (quick && cn != 63 && cn != 66 && cn != 70 && cn != 80 && cn != 90) continue;
        // Near the threshold the noise is made of clicks, which take longer to count.
        cases.push_back({cn, quick ? 3.0 : cn < 67 ? 20.0 : 8.0});
    }
    return cases;
}

std::vector<SeparationCase> SeparationCases(bool quick) {
    std::vector<SeparationCase> cases;
    for (const double frequency_Hz :
         {30.0, 100.0, 400.0, 1000.0, 3000.0, 6000.0, 10000.0, 12000.0, 14000.0}) {
        if (quick && frequency_Hz != 30 && frequency_Hz != 400 && frequency_Hz != 3000 &&
            frequency_Hz != 10000 && frequency_Hz != 14000)
            continue;
        cases.push_back({frequency_Hz});
    }
    return cases;
}

std::vector<Task> Measure(std::vector<NoiseCase>& cases) {
    std::vector<Task> tasks;
    for (NoiseCase& noise : cases) {
        tasks.push_back(
            {Named("sound at %.0f dB-Hz", noise.carrierToNoise_dBHz), [&noise] { MeasureNoise(noise); }});
    }
    return tasks;
}

std::vector<Task> Measure(std::vector<SeparationCase>& cases) {
    std::vector<Task> tasks;
    for (SeparationCase& separation : cases) {
        tasks.push_back(
            {Named("separation at %.0f Hz", separation.frequency_Hz), [&separation] {
                 const double frequency_Hz = separation.frequency_Hz;
                 const Heard heard = Listen(ToneAir({{frequency_Hz, Before(40000, frequency_Hz), 0}}), 1);
                 separation.reached_dB =
                     Decibel(Size(heard.left, frequency_Hz) / Size(heard.right, frequency_Hz));
             }});
    }
    return tasks;
}

std::vector<Task> Measure(CleanSound& sound) {
    return {
        {"clean sound", [&sound] { MeasureClean(sound); }},
        {"response at 50 us",
         [&sound] { MeasureResponse(50e-6, sdr::DeEmphasis::k50us, &sound.lowest_dB, &sound.highest_dB); }},
        {"response at 75 us", [&sound] {
             MeasureResponse(75e-6, sdr::DeEmphasis::k75us, &sound.lowest75_dB, &sound.highest75_dB);
         }}};
}

}  // namespace bench
