// Measures sound: how loud, and how much of a tone.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace test {

// Interleaved stereo at 44.1 kHz.
struct Sound {
    std::vector<std::int16_t> samples;
    std::size_t Frames() const { return samples.size() / 2; }
    // The last `frames` frames.
    Sound Tail(std::size_t frames) const;
    // Root mean square of one side, full scale 1.
    double Rms(std::size_t side) const;
    // Amplitude of a tone on one side, full scale 1.
    double Tone(std::size_t side, double frequency_Hz) const;
};

// A WAV file's sound; the header must be that of 44.1 kHz stereo with 16 bits, and its sizes must fit the
// file (sound that is not in the header yet may follow). Empty otherwise.
Sound WavSound(const std::string& bytes);

}  // namespace test
