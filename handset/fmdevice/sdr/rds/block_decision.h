// The most likely word of a block, from soft symbols. Portable.
//
// What is sent is differentially coded (IEC 62106, 1.6): bit d of a block says whether a symbol differs from
// the one before it. A wrong symbol therefore spoils two neighbouring bits, and hard bits throw away how sure
// each symbol was. Here the 27 symbols of a block, with the last one of the block before, are judged as a
// whole: every word of the code is a way through a trellis whose state is the syndrome so far (10 bits) and
// the last symbol, 2048 states, and the likelihoods of all ways together say how probable the best word is.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "handset/fmdevice/sdr/rds/block_code.h"

namespace sdr::rds {

// The last symbol of the block before, then the block's own.
constexpr std::size_t kBlockSymbols = kBlockBits + 1;
// Logarithms of the odds that a symbol is a one: ln P(1) / P(0).
using SoftBlock = std::array<float, kBlockSymbols>;

struct BlockDecision {
    std::uint16_t information = 0;
    // ln of the odds that this is what was sent, against every other word and against no block being here at
    // all.
    float odds = 0.0f;
    // ln of how much better a block of this offset explains the symbols than random bits do.
    float evidence = 0.0f;
};

struct BlockPrior {
    // That there is no block of this offset here: the alignment is wrong, or nothing is sent.
    double astray = 0.01;
    // A word that is to be expected, as the PI code of the tuned station in block A.
    std::optional<std::uint16_t> expected;
};

// The bits of the symbols' signs, the first one highest.
[[nodiscard]] std::uint32_t HardBits(const SoftBlock& symbols);

class CBlockTrellis {
  public:
    CBlockTrellis();
    [[nodiscard]] BlockDecision Decide(const SoftBlock& symbols, Offset offset, const BlockPrior& prior = {});

  private:
    static constexpr std::size_t kSyndromes = std::size_t{1} << kCheckBits;
    static constexpr std::size_t kStates = 2 * kSyndromes;
    // The first 10 and the last 10 bits reach each state by one way only; ways meet at the bits between them.
    static constexpr std::size_t kMeetings = kBlockBits - 2 * kCheckBits;
    // How likely a symbol is to be 0 or 1, the likelier of both being 1.
    using Weights = std::array<std::array<double, 2>, kBlockSymbols>;

    // Twice the state's number plus the last symbol.
    using States = std::array<double, kStates>;

    void Begin(const Weights& weights);
    void Meet(std::size_t step, const std::array<double, 2>& weight);
    void End(const Weights& weights);

    // The syndrome that the first 16 bits leave, when the states count the first 10 of them in binary.
    std::array<std::uint16_t, kSyndromes> syndromes_{};
    // The state's change by each of the six bits at which ways meet.
    std::array<std::uint16_t, kMeetings> columns_{};
    // The best way to each state, after the first ten bits and after each at which ways meet.
    std::array<States, kMeetings + 1> best_{};
    // All ways to it together, and room for the next.
    std::array<States, 2> all_{};
    // The ways from a state to the end, by the last ten bits.
    States ends_{};
};

// A block whose signs already are a word of the code needs no trellis when each other word would have to turn
// symbols that are sure: the odds that are certain without looking, or nothing.
[[nodiscard]] std::optional<BlockDecision> DecideAtSight(const SoftBlock& symbols, Offset offset);

}  // namespace sdr::rds
