// What no decoder of single blocks can do better than.
#pragma once

#include <cstdint>

namespace bench {

// Eb/N0 of RDS behind a perfect discriminator: noise of density f^2 N0 / C at 57 kHz, half of a bit's energy
// from the waveform of equal symbols with that peak deviation.
double EnergyToNoise_dB(double carrierToNoise_dBHz, double rdsDeviation_Hz);

// The share of blocks for which another word of the code than the one sent explains the 27 symbols best,
// carrier, clock and place being known: by trying all 65536 words for each of so many blocks.
double BestBlockErrorRate(double energyToNoise_dB, int blocks, std::uint64_t seed);

// The left side of a stereo station behind 50 us: what a tone of `deviation_Hz` on that side is above the
// noise of a perfect discriminator up to 15 kHz.
double StereoLimit_dB(double carrierToNoise_dBHz, double deviation_Hz);

}  // namespace bench
