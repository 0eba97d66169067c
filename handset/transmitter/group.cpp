#include "handset/transmitter/group.h"

namespace transmitter {
namespace {

constexpr std::uint32_t kGenerator = 0x5B9;
constexpr int kCheckBits = 10;
constexpr std::uint16_t kVersionB = 0x0800;

}  // namespace

std::uint16_t Checkword(std::uint16_t word, Offset offset) {
    std::uint32_t rest = static_cast<std::uint32_t>(word) << kCheckBits;
    for (int bit = kBlockBits - 1; bit >= kCheckBits; --bit) {
        if ((rest >> bit & 1u) != 0) rest ^= kGenerator << (bit - kCheckBits);
    }
    return static_cast<std::uint16_t>(rest ^ static_cast<std::uint32_t>(offset));
}

std::uint32_t Block(std::uint16_t word, Offset offset) {
    return static_cast<std::uint32_t>(word) << kCheckBits | Checkword(word, offset);
}

Offset OffsetAt(const Group& group, int place) {
    constexpr Offset kPlain[] = {Offset::kA, Offset::kB, Offset::kC, Offset::kD};
    const bool versionB = (group.words[1] & kVersionB) != 0;
    return place == 2 && versionB ? Offset::kCPrime : kPlain[place];
}

std::array<bool, kGroupBits> Bits(const Group& group) {
    std::array<bool, kGroupBits> bits{};
    std::size_t next = 0;
    for (int place = 0; place < 4; ++place) {
        const std::uint32_t block = Block(group.words[place], OffsetAt(group, place)) ^ group.flips[place];
        for (int bit = kBlockBits - 1; bit >= 0; --bit) bits[next++] = (block >> bit & 1u) != 0;
    }
    return bits;
}

}  // namespace transmitter
