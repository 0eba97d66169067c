// Finds where blocks begin, stays with it through fades, and decides them. Portable.
//
// Of 104 alignments of a group one is right. Each place in the stream whose last 26 hard bits have the
// syndrome of an offset word is a hit for one alignment; hits fade with time. An alignment with some hits is
// believed when its blocks, taken as soft symbols, are explained better by the code than by chance. The same
// odds, block by block, say later whether the receiver is still in step: noise says nothing against it, only
// clear symbols that are no words do.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "handset/fmdevice/sdr/rds/block_decision.h"
#include "handset/fmdevice/sdr/rds/group.h"

namespace sdr::rds {

class CBlockSync {
  public:
    // The first handler gets each block as soon as it is decided, the second each group.
    CBlockSync(BlockHandler onBlock, GroupHandler onGroup);
    // Another station: nothing is known.
    void Restart();
    // The next symbol: ln of the odds that it is a one.
    void Push(float symbol);
    bool InStep() const { return alignment_.has_value(); }
    // The share of the last blocks that was received, 0 to 1.
    float ReceivedShare() const { return receivedShare_; }
    // ln of the odds for being in step.
    double Confidence() const { return confidence_; }

  private:
    static constexpr std::size_t kHistory = 1024;  // symbols
    // The blocks by which an alignment is judged.
    static constexpr std::size_t kJudged = 12;

    struct Hits {
        float score = 0.0f;
        std::uint64_t at = 0;
    };

    [[nodiscard]] SoftBlock BlockBefore(std::uint64_t end) const;
    [[nodiscard]] std::size_t PlaceAt(std::uint64_t end, std::size_t alignment) const;
    void CountHits();
    void Consider(std::size_t alignment);
    [[nodiscard]] double EvidenceFor(std::size_t alignment, std::size_t blocks);
    [[nodiscard]] BlockDecision DecideBlock(const SoftBlock& symbols, Offset offset);
    [[nodiscard]] BlockDecision DecidePlace(const SoftBlock& symbols, std::size_t place, Offset* offset);
    void StepInto(std::size_t alignment, double evidence);
    void TakeBlock(std::uint64_t end);
    void Note(std::size_t place, const Block& block);
    void LearnPi(const Block& block);
    void GiveGroup();

    BlockHandler onBlock_;
    GroupHandler onGroup_;
    CBlockTrellis trellis_;
    std::array<float, kHistory> symbols_{};
    std::uint64_t count_ = 0;
    std::uint32_t bits_ = 0;
    std::array<Hits, kGroupBits> hits_{};

    // Where a group ends, counted modulo its bits.
    std::optional<std::size_t> alignment_;
    double confidence_ = 0.0;
    std::uint64_t decided_ = 0;  // up to that symbol
    Group group_;
    bool groupBegun_ = false;
    float receivedShare_ = 0.0f;
    // The PI code of block A, once it has come several times.
    std::uint16_t pi_ = 0;
    int piSeen_ = 0;
};

}  // namespace sdr::rds
