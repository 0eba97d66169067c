// The round of RDS texts, and what a weak signal loses of them.
#include "handset/fmdevice/rds_reader.h"

namespace fm {
namespace {

struct Row {
    RdsTextKind kind;
    std::string RdsData::*text;
};

constexpr Row kRound[] = {
    {RdsTextKind::kServiceName, &RdsData::serviceName},
    {RdsTextKind::kRadioText, &RdsData::radioText},
    {RdsTextKind::kProgramText, &RdsData::programText},
};
constexpr int kRows = static_cast<int>(std::size(kRound));

// Spreads the seconds evenly over 0 to 19.
std::uint32_t LotOfSecond(std::uint64_t second) {
    auto x = static_cast<std::uint32_t>(second) * 2654435761u;
    x ^= x >> 15;
    return x % 20;
}

}  // namespace

bool RdsComesThrough(int level, std::uint64_t now_ms) {
    if (level <= kNoRdsLevel) return false;
    if (level > kFlawedRdsLevel) return true;
    // One second in twenty at 25, ten in twenty at 16.
    return LotOfSecond(now_ms / 1000) >= static_cast<std::uint32_t>(kFlawedRdsLevel + 1 - level);
}

std::optional<RdsText> CRdsReader::Next(const RdsData& data, std::uint64_t now_ms) {
    const bool keep = current_ >= 0 && now_ms - since_ms_ < kTextPace_ms;
    for (int step = keep ? 0 : 1; step <= kRows; ++step) {
        const int row = (current_ + step + kRows) % kRows;
        const std::string& text = data.*kRound[row].text;
        if (text.empty()) continue;
        if (row != current_ || !keep) since_ms_ = now_ms;
        current_ = row;
        return RdsText{kRound[row].kind, text};
    }
    return std::nullopt;
}

}  // namespace fm
