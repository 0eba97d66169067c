#include "tests/bench/reception/ideal_limit.h"

#include <array>
#include <cmath>
#include <vector>

#include "handset/transmitter/group.h"
#include "handset/transmitter/noise.h"

namespace bench {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kHalf = 13;  // bits of a block in each half
using Symbols = std::array<double, 2 * kHalf + 1>;

// For each word of 13 bits: what 13 symbols that change by these bits, after one that is 1, agree with; and
// the last.
struct HalfWord {
    double agreement;
    double last;
};

std::vector<HalfWord> HalfWords(const double* symbols) {
    std::vector<HalfWord> words(1u << kHalf);
    for (std::uint32_t word = 0; word < words.size(); ++word) {
        double symbol = 1, sum = 0;
        for (int bit = 0; bit < kHalf; ++bit) {
            if ((word >> (kHalf - 1 - bit) & 1u) != 0) symbol = -symbol;
            sum += symbol * symbols[bit];
        }
        words[word] = {sum, symbol};
    }
    return words;
}

const std::vector<std::uint32_t>& CodeWords() {
    static const std::vector<std::uint32_t> words = [] {
        std::vector<std::uint32_t> all;
        for (std::uint32_t word = 0; word < 0x10000; ++word) {
            all.push_back(transmitter::Block(static_cast<std::uint16_t>(word), transmitter::Offset::kA));
        }
        return all;
    }();
    return words;
}

// Which word explains the symbols best; whether the first symbol was up or down is not known beforehand.
std::size_t BestWord(const Symbols& symbols) {
    const auto first = HalfWords(&symbols[1]), second = HalfWords(&symbols[1 + kHalf]);
    std::size_t best = 0;
    double most = -1;
    for (std::size_t i = 0; i < CodeWords().size(); ++i) {
        const std::uint32_t code = CodeWords()[i];
        const HalfWord& front = first[code >> kHalf];
        const double agreement = std::abs(symbols[0] + front.agreement +
                                          front.last * second[code & ((1u << kHalf) - 1)].agreement);
        if (agreement > most) most = agreement, best = i;
    }
    return best;
}

}  // namespace

double EnergyToNoise_dB(double carrierToNoise_dBHz, double rdsDeviation_Hz) {
    const double share = rdsDeviation_Hz * rdsDeviation_Hz / 4 / (57000.0 * 57000.0) / 1187.5;
    return carrierToNoise_dBHz + 10 * std::log10(share);
}

double BestBlockErrorRate(double energyToNoise_dB, int blocks, std::uint64_t seed) {
    transmitter::CNoise noise(seed);
    const double size = std::sqrt(0.5 * std::pow(10.0, -energyToNoise_dB / 10));
    int wrong = 0;
    for (int block = 0; block < blocks; ++block) {
        const auto sent = static_cast<std::size_t>(noise.Uniform() * 65536);
        const std::uint32_t code = CodeWords()[sent];
        Symbols symbols{};
        double symbol = 1;
        for (std::size_t i = 0; i < symbols.size(); ++i) {
            if (i > 0 && (code >> (2 * kHalf - i) & 1u) != 0) symbol = -symbol;
            symbols[i] = symbol + size * static_cast<double>(noise.Gaussian().real());
        }
        wrong += BestWord(symbols) != sent ? 1 : 0;
    }
    return static_cast<double>(wrong) / blocks;
}

double StereoLimit_dB(double carrierToNoise_dBHz, double deviation_Hz) {
    // Sum and difference, the latter from both sides of 38 kHz, under the de-emphasis.
    double noise = 0;
    constexpr double kStep_Hz = 1;
    for (double f = kStep_Hz / 2; f < 15000; f += kStep_Hz) {
        const double reactance = 2 * kPi * f * 50e-6;
        noise += (f * f + std::pow(38000 - f, 2) + std::pow(38000 + f, 2)) / (1 + reactance * reactance) *
                 kStep_Hz;
    }
    return carrierToNoise_dBHz + 10 * std::log10(deviation_Hz * deviation_Hz / 2 / noise);
}

}  // namespace bench
