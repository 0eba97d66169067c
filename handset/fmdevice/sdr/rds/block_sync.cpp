// Synchronisation of blocks and groups (IEC 62106, 2.4 and annex C) by likelihood.
#include "handset/fmdevice/sdr/rds/block_sync.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace sdr::rds {
namespace {

// What is left of an alignment's hits after each group.
constexpr float kHitMemory = 0.9f;
constexpr float kEnoughHits = 1.6f;
// Evidence, as ln of odds. One of 104 alignments is right, which 4.6 make up for.
constexpr double kBelieved = 11.0;
constexpr double kStepChange = 9.0;  // a new alignment must be that much better than the present one
// One block cannot say more against an alignment than that: a fade may have been taken for clear symbols.
constexpr double kWorst = -5.0;
// A bit slips once in ten thousand blocks; so sure can one be at most.
constexpr double kMostConfidence = 9.2;
constexpr double kLeastConfidence = -2.0;
constexpr float kShareMemory = 1.0f / 48.0f;
constexpr int kPiKnown = 3;
constexpr int kPiMost = 12;

// The version's bit of block B: version B repeats the PI code in block 3, under C' (2.1, 3.1.3).
constexpr std::uint16_t kVersionB = 0x0800;

Offset OffsetAt(std::size_t place) {
    constexpr std::array<Offset, kGroupBlocks> kOffsetsInOrder = {Offset::kA, Offset::kB, Offset::kC,
                                                                  Offset::kD};
    return kOffsetsInOrder[place];
}

}  // namespace

CBlockSync::CBlockSync(BlockHandler onBlock, GroupHandler onGroup)
    : onBlock_(std::move(onBlock)), onGroup_(std::move(onGroup)) {}

void CBlockSync::Restart() {
    count_ = 0;
    bits_ = 0;
    hits_.fill({});
    alignment_.reset();
    confidence_ = 0.0;
    decided_ = 0;
    groupBegun_ = false;
    receivedShare_ = 0.0f;
    piSeen_ = 0;
}

SoftBlock CBlockSync::BlockBefore(std::uint64_t end) const {
    SoftBlock block;
    for (std::size_t i = 0; i < kBlockSymbols; ++i) {
        block[i] = symbols_[(end - kBlockSymbols + i) % kHistory];
    }
    return block;
}

// The place of the block that ends there, when groups end at the alignment.
std::size_t CBlockSync::PlaceAt(std::uint64_t end, std::size_t alignment) const {
    const std::size_t past = (end % kGroupBits + kGroupBits - alignment) % kGroupBits;
    return past == 0 ? kGroupBlocks - 1 : past / kBlockBits - 1;
}

void CBlockSync::Push(float symbol) {
    const bool one = symbol > 0.0f;
    const bool before = symbols_[(count_ + kHistory - 1) % kHistory] > 0.0f;
    symbols_[count_ % kHistory] = symbol;
    ++count_;
    bits_ = (bits_ << 1 | (one != before ? 1u : 0u)) & ((1u << kBlockBits) - 1);
    if (count_ < kBlockSymbols) return;
    CountHits();
    // Getting into step has taken this block already.
    if (decided_ == count_) return;
    if (alignment_ && (count_ % kGroupBits + kGroupBits - *alignment_) % kBlockBits == 0) TakeBlock(count_);
}

void CBlockSync::CountHits() {
    const std::optional<Offset> offset = OffsetOf(Syndrome(bits_));
    if (!offset || *offset == Offset::kE) return;
    const std::size_t toEnd = (kGroupBlocks - 1 - PlaceOf(*offset)) * kBlockBits;
    const std::size_t alignment = (count_ + toEnd) % kGroupBits;
    Hits& hits = hits_[alignment];
    const auto groups = static_cast<float>(count_ - hits.at) / static_cast<float>(kGroupBits);
    hits.score = hits.score * std::pow(kHitMemory, groups) + 1.0f;
    hits.at = count_;
    if (hits.score >= kEnoughHits && alignment != alignment_) Consider(alignment);
}

BlockDecision CBlockSync::DecideBlock(const SoftBlock& symbols, Offset offset) {
    const std::optional<BlockDecision> atSight = DecideAtSight(symbols, offset);
    BlockPrior prior;
    prior.astray = 1.0 / (1.0 + std::exp(confidence_));
    if (atSight) {
        // However clear the word, one of 1024 chance words looks the same.
        BlockDecision decision = *atSight;
        decision.odds = std::min(decision.odds, static_cast<float>(decision.evidence + confidence_));
        return decision;
    }
    const bool repeatsPi = offset == Offset::kA || offset == Offset::kCPrime;
    if (repeatsPi && piSeen_ >= kPiKnown) prior.expected = pi_;
    return trellis_.Decide(symbols, offset, prior);
}

double CBlockSync::EvidenceFor(std::size_t alignment, std::size_t blocks) {
    const std::uint64_t past = (count_ % kGroupBits + kGroupBits - alignment) % kBlockBits;
    double evidence = 0.0;
    std::uint64_t end = count_ - past;
    for (std::size_t i = 0; i < blocks && end >= kBlockSymbols; ++i, end -= kBlockBits) {
        if (count_ - end + kBlockSymbols > kHistory) break;
        Offset offset = Offset::kA;
        const BlockDecision decision = DecidePlace(BlockBefore(end), PlaceAt(end, alignment), &offset);
        evidence += std::max(static_cast<double>(decision.evidence), kWorst);
    }
    return evidence;
}

void CBlockSync::Consider(std::size_t alignment) {
    if (alignment_ && confidence_ > 0.5 * kMostConfidence) return;
    const double evidence = EvidenceFor(alignment, kJudged);
    if (evidence < kBelieved) return;
    if (alignment_ && evidence < EvidenceFor(*alignment_, kJudged) + kStepChange) return;
    StepInto(alignment, evidence);
}

// The blocks that are still in memory are decided after all.
void CBlockSync::StepInto(std::size_t alignment, double evidence) {
    if (groupBegun_) GiveGroup();
    alignment_ = alignment;
    confidence_ = std::min(evidence - std::log(static_cast<double>(kGroupBits)), kMostConfidence);
    const std::uint64_t past = (count_ % kGroupBits + kGroupBits - alignment) % kBlockBits;
    std::uint64_t end = count_ - past;
    while (end >= kBlockSymbols + kBlockBits && end - kBlockBits > decided_ &&
           count_ - end + kBlockBits + kBlockSymbols <= kHistory) {
        end -= kBlockBits;
    }
    for (; end <= count_; end += kBlockBits) {
        if (end >= kBlockSymbols && end > decided_) TakeBlock(end);
    }
}

// Block 3 has two offset words; without block 2 both are tried.
BlockDecision CBlockSync::DecidePlace(const SoftBlock& symbols, std::size_t place, Offset* offset) {
    *offset = OffsetAt(place);
    const BlockDecision plain = DecideBlock(symbols, *offset);
    if (place != PlaceOf(Offset::kC)) return plain;
    const BlockDecision repeated = DecideBlock(symbols, Offset::kCPrime);
    const bool prime = repeated.evidence > plain.evidence;
    BlockDecision better = prime ? repeated : plain;
    const float other = prime ? plain.evidence : repeated.evidence;
    if (prime) *offset = Offset::kCPrime;
    // Either may be sent: what speaks for the one speaks against the other.
    better.odds = -std::log(std::exp(-better.odds) + std::exp(other - better.evidence));
    better.evidence = better.evidence - std::log(2.0f) + std::log1p(std::exp(other - better.evidence));
    return better;
}

void CBlockSync::TakeBlock(std::uint64_t end) {
    const SoftBlock symbols = BlockBefore(end);
    const std::size_t place = PlaceAt(end, *alignment_);
    const Block& second = group_.blocks[PlaceOf(Offset::kB)];
    Block block;
    BlockDecision decision;
    if (place == PlaceOf(Offset::kC) && groupBegun_ && second.Received()) {
        block.offset = (second.information & kVersionB) != 0 ? Offset::kCPrime : Offset::kC;
        decision = DecideBlock(symbols, block.offset);
    } else {
        decision = DecidePlace(symbols, place, &block.offset);
    }
    block.information = decision.information;
    block.odds = decision.odds;
    block.status = decision.odds >= kCertain_odds    ? BlockStatus::kCertain
                   : decision.odds >= kReceived_odds ? BlockStatus::kReceived
                                                     : BlockStatus::kWrong;
    double evidence = decision.evidence;
    if (!block.Received() && Syndrome(HardBits(symbols)) == OffsetWord(Offset::kE)) {
        block.status = BlockStatus::kNoData;
        block.offset = Offset::kE;
        evidence = 0.0;
    }
    decided_ = end;
    confidence_ = std::clamp(confidence_ + std::max(evidence, kWorst), kLeastConfidence, kMostConfidence);
    Note(place, block);
    // What is surely no block of this alignment, again and again: out of step.
    if (confidence_ <= kLeastConfidence) {
        if (groupBegun_) GiveGroup();
        alignment_.reset();
        confidence_ = 0.0;
    }
}

void CBlockSync::Note(std::size_t place, const Block& block) {
    receivedShare_ += ((block.Received() ? 1.0f : 0.0f) - receivedShare_) * kShareMemory;
    if (place == 0 && groupBegun_) GiveGroup();
    if (!groupBegun_) {
        group_ = Group{};
        group_.firstBit =
            static_cast<std::int64_t>(decided_) - static_cast<std::int64_t>((place + 1) * kBlockBits);
        groupBegun_ = true;
    }
    group_.blocks[place] = block;
    if (place == 0) LearnPi(block);
    if (onBlock_) onBlock_(place, block);
    if (place == kGroupBlocks - 1) GiveGroup();
}

void CBlockSync::LearnPi(const Block& block) {
    if (!block.Received()) return;
    if (piSeen_ > 0 && block.information == pi_) {
        piSeen_ = std::min(piSeen_ + 1, kPiMost);
    } else if (piSeen_ > 0) {
        piSeen_ = piSeen_ > kPiKnown ? piSeen_ - kPiKnown : 0;
    } else {
        pi_ = block.information;
        piSeen_ = 1;
    }
}

void CBlockSync::GiveGroup() {
    groupBegun_ = false;
    if (onGroup_) onGroup_(group_);
}

}  // namespace sdr::rds
