#include "handset/transmitter/noise.h"

#include <cmath>

namespace transmitter {
namespace {

std::uint64_t Left(std::uint64_t value, int bits) {
    return value << bits | value >> (64 - bits);
}

// SplitMix64: spreads a small seed over all bits.
std::uint64_t Spread(std::uint64_t& seed) {
    seed += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = seed;
    mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EBu;
    return mixed ^ mixed >> 31;
}

}  // namespace

CNoise::CNoise(std::uint64_t seed) {
    for (std::uint64_t& word : state_) word = Spread(seed);
}

// xoshiro256+ (Blackman and Vigna).
std::uint64_t CNoise::Next() {
    const std::uint64_t result = state_[0] + state_[3];
    const std::uint64_t shifted = state_[1] << 17;
    state_[2] ^= state_[0];
    state_[3] ^= state_[1];
    state_[1] ^= state_[2];
    state_[0] ^= state_[3];
    state_[2] ^= shifted;
    state_[3] = Left(state_[3], 45);
    return result;
}

double CNoise::Uniform() {
    return static_cast<double>(Next() >> 11) * 0x1p-53;
}

// Marsaglia's polar method: no sine, and one logarithm for two numbers.
std::complex<float> CNoise::Gaussian() {
    double x = 0, y = 0, square = 0;
    do {
        const std::uint64_t bits = Next();
        x = static_cast<double>(bits >> 32) * 0x1p-31 - 1;
        y = static_cast<double>(bits & 0xFFFFFFFFu) * 0x1p-31 - 1;
        square = x * x + y * y;
    } while (square >= 1 || square == 0);
    const double scale = std::sqrt(-2 * std::log(square) / square);
    return {static_cast<float>(x * scale), static_cast<float>(y * scale)};
}

}  // namespace transmitter
