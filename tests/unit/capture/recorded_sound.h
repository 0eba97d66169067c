// What is in a WAV file, read by the tests themselves.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace test {

struct RecordedSound {
    bool whole = false;  // a plain PCM file whose sizes all fit its length
    std::uint32_t rate_Hz = 0;
    std::uint16_t channels = 0;
    std::uint16_t bits = 0;
    std::vector<std::int16_t> samples;

    std::size_t Frames() const { return channels == 0 ? 0 : samples.size() / channels; }
    double Seconds() const { return static_cast<double>(Frames()) / rate_Hz; }
    // The peak of a tone in one channel, full scale 1.
    double Tone(double frequency_Hz, std::size_t channel = 0) const;
    // The root of the mean square of all samples, full scale 1.
    double Loudness() const;
    // The frequency between 400 and 480 Hz that is loudest in the first channel.
    double Pitch_Hz() const;
};

RecordedSound ReadWav(const std::string& bytes);

}  // namespace test
