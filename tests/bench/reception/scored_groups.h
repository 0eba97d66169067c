// What a decoder of RDS gave, held against what was sent.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace bench {

using SentGroup = std::array<std::uint16_t, 4>;

// A group as a decoder gave it: a block that it rejected is missing.
using GivenGroup = std::array<std::optional<std::uint16_t>, 4>;

struct Score {
    long sent = 0;  // blocks
    long right = 0;
    long wrong = 0;
    long wholeGroups = 0;  // four blocks, all right
    long sentGroups = 0;

    double ErrorRate() const {
        return sent == 0 ? 1 : static_cast<double>(sent - right) / static_cast<double>(sent);
    }
    double WrongRate() const {
        return sent == 0 ? 0 : static_cast<double>(wrong) / static_cast<double>(sent);
    }
    double WholeRate() const {
        return sentGroups == 0 ? 0 : static_cast<double>(wholeGroups) / static_cast<double>(sentGroups);
    }
};

// Lays the given groups beside the sent ones, in their order and none twice, such that most blocks agree: a
// decoder need not say when a group was received. A group that fits nowhere counts with the blocks that it
// claims as wrong. Groups before `first` and from `end` on are not counted.
Score Compare(const std::vector<SentGroup>& sent, const std::vector<GivenGroup>& given, std::size_t first,
              std::size_t end);

}  // namespace bench
