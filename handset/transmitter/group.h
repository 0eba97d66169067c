// RDS groups as they are sent: four information words, their checkwords and the bits of both. Portable.
#pragma once

#include <array>
#include <cstdint>
#include <functional>

namespace transmitter {

// The offset words of IEC 62106-2, 5.4: which place in its group a block has.
enum class Offset : std::uint16_t { kA = 0x0FC, kB = 0x198, kC = 0x168, kCPrime = 0x350, kD = 0x1B4 };

struct Group {
    std::array<std::uint16_t, 4> words{};
    // What is turned over in each sent block, checkword included; for the tests of a receiver.
    std::array<std::uint32_t, 4> flips{};
};

// Asked for one group after another, without end.
using GroupSource = std::function<Group()>;

// The ten bits behind an information word, by division through x^10 + x^8 + x^7 + x^5 + x^4 + x^3 + 1.
[[nodiscard]] std::uint16_t Checkword(std::uint16_t word, Offset offset);

// A block of 26 bits, the first one sent highest.
[[nodiscard]] std::uint32_t Block(std::uint16_t word, Offset offset);

// The offset of the block at `place`, 0 to 3; version B of a type repeats the PI in its third.
[[nodiscard]] Offset OffsetAt(const Group& group, int place);

constexpr int kBlockBits = 26;
constexpr int kGroupBits = 104;

// The bits of a group, first sent first, not yet coded differentially.
[[nodiscard]] std::array<bool, kGroupBits> Bits(const Group& group);

}  // namespace transmitter
