// Blocks and groups as they were received. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

#include "handset/fmdevice/sdr/rds/block_code.h"

namespace sdr::rds {

enum class BlockStatus : std::uint8_t {
    kMissing,   // it came before the receiver was in step
    kWrong,     // no word was likely enough
    kNoData,    // sent under the offset word E
    kReceived,  // likelier than kReceived_odds
    kCertain,   // likelier than kCertain_odds: one sight is enough
};

// ln of the odds for the decided word against everything else.
constexpr float kReceived_odds = 3.5f;
constexpr float kCertain_odds = 12.0f;

struct Block {
    BlockStatus status = BlockStatus::kMissing;
    Offset offset = Offset::kA;
    std::uint16_t information = 0;
    float odds = 0.0f;
    bool Received() const { return status >= BlockStatus::kReceived; }
    bool Certain() const { return status == BlockStatus::kCertain; }
};

struct Group {
    std::array<Block, kGroupBlocks> blocks;
    // The first bit's number since the receiver was started; below 0 when the group had begun before.
    std::int64_t firstBit = 0;
    bool Whole() const {
        for (const Block& block : blocks) {
            if (!block.Received()) return false;
        }
        return true;
    }
};

using BlockHandler = std::function<void(std::size_t place, const Block& block)>;
using GroupHandler = std::function<void(const Group& group)>;

}  // namespace sdr::rds
