// Sound with a known content, and how much of a tone is in a sound.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace test {

// Stereo frames at 44.1 kHz: a tone of the same loudness (a peak of 1 is full scale) on both sides.
std::vector<std::int16_t> StereoTone(double frequency_Hz, std::size_t frames, double peak);

// 440 Hz with a peak of one half at the rate that the encoder takes: 8 kHz, one channel.
std::vector<std::int16_t> SpeechRateTone(double seconds);

// The peak of the tone of this frequency in one channel of a sound, 1 being full scale.
double TonePeak(const std::vector<std::int16_t>& samples, std::size_t channels, std::size_t channel,
                double frequency_Hz, double rate_Hz);

// The root of the mean square, 1 being full scale.
double Loudness(const std::vector<std::int16_t>& samples);

double Decibels(double ratio);

}  // namespace test
