// The order of a station's groups, their loss at a weak signal, and how texts are put together from them.
#include "handset/fmdevice/band/rds_reader.h"

#include <algorithm>

#include "handset/base/utf8.h"

namespace fm {
namespace {

constexpr std::uint64_t kGroupBits = 104;
constexpr std::uint64_t kTenthBitsPerSecond = 11875;
// A receiver that was not asked for longer has put every text together by then, and starts from here.
constexpr std::uint64_t kLongestBacklog = 128;
// Of the groups between those of the name, every fourth is the programme type name's.
constexpr std::uint64_t kProgramTextEvery = 4;

constexpr std::size_t kNameShares = 4;
constexpr std::size_t kProgramTextShares = 2;
constexpr std::size_t kRadioTextPerShare = 4;
constexpr std::size_t kRadioTextShares = kRadioTextLength / kRadioTextPerShare;

// A radio text that is not of full length is ended by a mark, which takes a letter's place (3.1.5.3).
std::size_t SharesOf(RdsTextKind kind, const std::string& text) {
    if (kind == RdsTextKind::kServiceName) return kNameShares;
    if (kind == RdsTextKind::kProgramText) return kProgramTextShares;
    return std::min(handset::Utf8Length(text) / kRadioTextPerShare + 1, kRadioTextShares);
}

// What a group carries, and how many of its kind came before it.
struct Slot {
    RdsTextKind kind;
    std::uint64_t turn;
};

Slot SlotOf(std::uint64_t group, bool radioText, bool programText) {
    const std::uint64_t pair = group / 2;
    if (!radioText && !programText) return {RdsTextKind::kServiceName, group};
    if (group % 2 == 0) return {RdsTextKind::kServiceName, pair};
    if (!programText) return {RdsTextKind::kRadioText, pair};
    if (!radioText) return {RdsTextKind::kProgramText, pair};
    const std::uint64_t cycle = pair / kProgramTextEvery;
    if (pair % kProgramTextEvery == 0) return {RdsTextKind::kProgramText, cycle};
    return {RdsTextKind::kRadioText, pair - cycle - 1};
}

std::uint64_t TimeOfGroup_ms(std::uint64_t group) {
    return group * kGroupBits * 10 * 1000 / kTenthBitsPerSecond;
}

// Spreads the seconds evenly over 0 to 19.
std::uint32_t LotOfSecond(std::uint64_t second) {
    auto x = static_cast<std::uint32_t>(second) * 2654435761u;
    x ^= x >> 15;
    return x % 20;
}

}  // namespace

std::uint64_t RdsGroupAt(std::uint64_t now_ms) {
    return now_ms * kTenthBitsPerSecond / (kGroupBits * 10 * 1000);
}

bool RdsComesThrough(int level, std::uint64_t now_ms) {
    if (level <= kNoRdsLevel) return false;
    if (level > kFlawedRdsLevel) return true;
    // One second in twenty at 25, ten in twenty at 16.
    return LotOfSecond(now_ms / 1000) >= static_cast<std::uint32_t>(kFlawedRdsLevel + 1 - level);
}

void CRdsReader::Restart(std::uint64_t now_ms) {
    *this = {};
    next_ = RdsGroupAt(now_ms) + 1;
}

void CRdsReader::Listen(const RdsData& data, int level, std::uint64_t now_ms) {
    const std::uint64_t end = RdsGroupAt(now_ms);
    if (end > next_ + kLongestBacklog) next_ = end - kLongestBacklog;
    for (; next_ <= end; ++next_) {
        if (data.Sent() && RdsComesThrough(level, TimeOfGroup_ms(next_))) Take(data, next_);
    }
    comesThrough_ = data.Sent() && RdsComesThrough(level, now_ms);
}

void CRdsReader::Take(const RdsData& data, std::uint64_t group) {
    hasGroup_ = true;
    const std::uint64_t time_ms = TimeOfGroup_ms(group);
    const std::string& radioText = data.RadioText(time_ms);
    const Slot slot = SlotOf(group, !radioText.empty(), !data.programText.empty());
    const std::string* const kTexts[] = {&data.ServiceName(time_ms), &radioText, &data.programText};
    TakeShare(slot.kind, *kTexts[static_cast<std::size_t>(slot.kind)], slot.turn, group);
}

void CRdsReader::TakeShare(RdsTextKind kind, const std::string& text, std::uint64_t turn,
                           std::uint64_t group) {
    Assembly& assembly = Of(kind);
    if (text.empty()) {
        assembly = {};
        return;
    }
    // Another text: what is there of the old one is of no use.
    if (text != assembly.text) {
        assembly.text = text;
        assembly.received = 0;
    }
    const std::size_t shares = SharesOf(kind, text);
    assembly.received |= 1U << (turn % shares);
    if (assembly.received != (1U << shares) - 1) return;
    assembly.received = 0;
    assembly.complete = text;
    if (assembly.completed == 0) assembly.completed = group;
}

std::optional<RdsText> CRdsReader::Next() const {
    if (!comesThrough_) return std::nullopt;
    std::optional<RdsText> next = given_;
    std::uint64_t oldest = 0;
    for (std::size_t kind = 0; kind < assemblies_.size(); ++kind) {
        const Assembly& assembly = assemblies_[kind];
        if (assembly.completed == 0 || (oldest != 0 && assembly.completed >= oldest)) continue;
        oldest = assembly.completed;
        next = RdsText{static_cast<RdsTextKind>(kind), assembly.complete};
    }
    return next;
}

void CRdsReader::Given(const RdsText& text) {
    Of(text.kind).completed = 0;
    given_ = text;
}

}  // namespace fm
