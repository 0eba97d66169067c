// A trellis over the syndrome and the last symbol, in likelihoods (not their logarithms): products along a
// way, sums over ways. Weights are relative to the likelier value of each symbol, so that the hard decision
// weighs 1.
#include "handset/fmdevice/sdr/rds/block_decision.h"

#include <algorithm>
#include <cmath>

namespace sdr::rds {
namespace {

constexpr std::size_t kFirstBits = kCheckBits;
// Beyond this a symbol is as sure as a double can use in products of 27.
constexpr float kSurest = 20.0f;
// Two words differ in that many symbols at least, whole inversion apart (shown by a test over all words).
constexpr std::size_t kLeastDistance = 3;
constexpr float kCertainAtSight = 20.0f;
// Every word of a block is as likely as another, unless one is expected; an expected word is the one that
// is sent nine times of ten.
constexpr double kWords = 65536.0;
constexpr double kExpected = 0.9;
constexpr double kBitPatterns = 67108864.0;  // of 26 bits

std::uint16_t ColumnOf(std::size_t bit) {
    return Syndrome(1u << (kBlockBits - 1 - bit));
}

// Solves for the first ten bits whose syndromes add up to `syndrome`: any ten columns in a row are a basis.
std::uint16_t InFirstBits(std::uint16_t syndrome, const std::array<std::uint16_t, 1024>& syndromes) {
    const auto found = std::find(syndromes.begin(), syndromes.end(), syndrome);
    return static_cast<std::uint16_t>(found - syndromes.begin());
}

std::uint32_t BitsOf(std::uint32_t first, std::uint32_t meetings, std::uint32_t last) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kFirstBits; ++i) bits |= (first >> i & 1u) << (kBlockBits - 1 - i);
    return bits | meetings << kCheckBits | last;
}

double WeightOfWord(std::uint32_t block, const SoftBlock& symbols) {
    double sum = 0.0;
    for (const bool start : {false, true}) {
        bool symbol = start;
        double penalty = 0.0;
        for (std::size_t i = 0; i < kBlockSymbols; ++i) {
            if (i != 0) symbol ^= (block >> (kBlockBits - i) & 1u) != 0;
            if (symbol != (symbols[i] > 0.0f)) penalty += std::min(std::abs(symbols[i]), kSurest);
        }
        sum += std::exp(-penalty);
    }
    return sum;
}

}  // namespace

std::uint32_t HardBits(const SoftBlock& symbols) {
    std::uint32_t bits = 0;
    for (std::size_t i = 1; i < kBlockSymbols; ++i) {
        bits = bits << 1 | ((symbols[i] > 0.0f) != (symbols[i - 1] > 0.0f) ? 1u : 0u);
    }
    return bits;
}

std::optional<BlockDecision> DecideAtSight(const SoftBlock& symbols, Offset offset) {
    const std::uint32_t bits = HardBits(symbols);
    if (Syndrome(bits) != OffsetWord(offset)) return std::nullopt;
    SoftBlock sure;
    std::transform(symbols.begin(), symbols.end(), sure.begin(),
                   [](float symbol) { return std::min(std::abs(symbol), kSurest); });
    std::partial_sort(sure.begin(), sure.begin() + kLeastDistance, sure.end());
    float least = 0.0f;
    for (std::size_t i = 0; i < kLeastDistance; ++i) least += sure[i];
    if (least < kCertainAtSight) return std::nullopt;
    float evidence = std::log(static_cast<float>(kBitPatterns / kWords));
    for (const float symbol : sure) evidence -= std::log1p(std::exp(-symbol));
    return BlockDecision{InformationOf(bits), kCertainAtSight, evidence};
}

CBlockTrellis::CBlockTrellis() {
    for (std::size_t state = 0; state < kSyndromes; ++state) {
        for (std::size_t bit = 0; bit < kFirstBits; ++bit) {
            if (state >> bit & 1u) syndromes_[state] ^= ColumnOf(bit);
        }
    }
    for (std::size_t i = 0; i < kMeetings; ++i) {
        columns_[i] = InFirstBits(ColumnOf(kFirstBits + i), syndromes_);
    }
}

// Each of the first bits doubles the states that are reached.
void CBlockTrellis::Begin(const Weights& weights) {
    States& best = best_[0];
    best[0] = weights[0][0];
    best[1] = weights[0][1];
    for (std::size_t bit = 0; bit < kFirstBits; ++bit) {
        const std::array<double, 2>& weight = weights[bit + 1];
        const std::size_t reached = std::size_t{2} << bit;
        for (std::size_t i = 0; i < reached; i += 2) {
            const double zero = best[i];
            const double one = best[i + 1];
            best[i] = zero * weight[0];
            best[i + 1] = one * weight[1];
            best[reached + i] = one * weight[0];
            best[reached + i + 1] = zero * weight[1];
        }
    }
    all_[0] = best;
}

// A way comes from the same syndrome with the same symbol, or from the one that this bit changes with the
// other.
void CBlockTrellis::Meet(std::size_t step, const std::array<double, 2>& weight) {
    const std::size_t change = std::size_t{columns_[step]} << 1;
    const States& best = best_[step];
    const States& all = all_[step % 2];
    States& nextBest = best_[step + 1];
    States& nextAll = all_[(step + 1) % 2];
    for (std::size_t i = 0; i < kStates; i += 2) {
        const std::size_t turned = i ^ change;
        nextBest[i] = std::max(best[i], best[turned + 1]) * weight[0];
        nextBest[i + 1] = std::max(best[i + 1], best[turned]) * weight[1];
        nextAll[i] = (all[i] + all[turned + 1]) * weight[0];
        nextAll[i + 1] = (all[i + 1] + all[turned]) * weight[1];
    }
}

// From the last bit back: what ten bits weigh after a symbol.
void CBlockTrellis::End(const Weights& weights) {
    ends_[0] = ends_[1] = 1.0;
    for (std::size_t bit = 0; bit < kCheckBits; ++bit) {
        const std::array<double, 2>& weight = weights[kBlockBits - bit];
        const std::size_t reached = std::size_t{2} << bit;
        for (std::size_t i = 0; i < reached; i += 2) {
            const double zero = ends_[i] * weight[0];
            const double one = ends_[i + 1] * weight[1];
            ends_[i] = zero;
            ends_[i + 1] = one;
            ends_[reached + i] = one;
            ends_[reached + i + 1] = zero;
        }
    }
}

BlockDecision CBlockTrellis::Decide(const SoftBlock& symbols, Offset offset, const BlockPrior& prior) {
    Weights weights;
    double random = 1.0;  // all symbols there are, together
    for (std::size_t i = 0; i < kBlockSymbols; ++i) {
        const bool one = symbols[i] > 0.0f;
        const double other = std::exp(-static_cast<double>(std::min(std::abs(symbols[i]), kSurest)));
        weights[i] = {one ? other : 1.0, one ? 1.0 : other};
        random *= 1.0 + other;
    }
    Begin(weights);
    for (std::size_t step = 0; step < kMeetings; ++step) Meet(step, weights[kFirstBits + 1 + step]);
    End(weights);

    const std::uint16_t target = OffsetWord(offset);
    const States& all = all_[kMeetings % 2];
    double total = 0.0;
    double best = -1.0;
    std::size_t bestState = 0;
    for (std::size_t i = 0; i < kStates; ++i) {
        const double end = ends_[std::size_t{2} * (syndromes_[i >> 1] ^ target) + (i & 1u)];
        total += all[i] * end;
        const double way = best_[kMeetings][i] * end;
        if (way > best) {
            best = way;
            bestState = i;
        }
    }

    std::size_t state = bestState;
    std::uint32_t meetings = 0;
    for (std::size_t step = kMeetings; step-- > 0;) {
        const std::size_t turned = state ^ (std::size_t{columns_[step]} << 1 | 1u);
        if (best_[step][turned] <= best_[step][state]) continue;
        meetings |= 1u << (kMeetings - 1 - step);
        state = turned;
    }
    const auto last = static_cast<std::uint32_t>(syndromes_[bestState >> 1] ^ target);
    std::uint32_t block = BitsOf(static_cast<std::uint32_t>(state >> 1), meetings, last);

    // What each explanation is worth: this word, all other words, and no block at all.
    double word = WeightOfWord(block, symbols) / kWords;
    double others = std::max(total / kWords - word, 0.0);
    const double blank = random / kBitPatterns * prior.astray / (1.0 - prior.astray);
    if (prior.expected) {
        const std::uint32_t expected = Encode(*prior.expected, offset);
        const double known = WeightOfWord(expected, symbols);
        if (expected == block) {
            word = kExpected * known + (1.0 - kExpected) * word;
            others *= 1.0 - kExpected;
        } else {
            word *= 1.0 - kExpected;
            others = others * (1.0 - kExpected) + kExpected * known;
            if (kExpected * known > word) {
                others += word - kExpected * known;
                word = kExpected * known;
                block = expected;
            }
        }
    }
    BlockDecision decision;
    decision.information = InformationOf(block);
    constexpr double kLeast = 1e-300;
    decision.odds = static_cast<float>(std::log(std::max(word, kLeast) / std::max(others + blank, kLeast)));
    decision.evidence =
        static_cast<float>(std::log(std::max(total / kWords, kLeast) / (random / kBitPatterns)));
    return decision;
}

}  // namespace sdr::rds
