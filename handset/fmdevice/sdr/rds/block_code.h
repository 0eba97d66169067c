// The shortened cyclic code of a block: 16 bits of information and a checkword of 10 (IEC 62106, 2.3 and
// annex B). Portable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace sdr::rds {

constexpr std::size_t kInformationBits = 16;
constexpr std::size_t kCheckBits = 10;
constexpr std::size_t kBlockBits = kInformationBits + kCheckBits;
constexpr std::size_t kGroupBlocks = 4;
constexpr std::size_t kGroupBits = kGroupBlocks * kBlockBits;
constexpr double kBitRate_Hz = 1187.5;

// The word that is added to the checkword and tells which block of a group it is (annex A). E marks a block
// that carries no data of this system.
enum class Offset : std::uint8_t { kA, kB, kC, kCPrime, kD, kE };
constexpr std::size_t kOffsets = 6;

// Annex A, table A.1.
constexpr std::array<std::uint16_t, kOffsets> kOffsetWords = {0x0FC, 0x198, 0x168, 0x350, 0x1B4, 0x000};

constexpr std::uint16_t OffsetWord(Offset offset) {
    return kOffsetWords[static_cast<std::size_t>(offset)];
}

// The place of a block in its group, 0 to 3. Not for E, which may stand anywhere.
constexpr std::size_t PlaceOf(Offset offset) {
    constexpr std::array<std::size_t, kOffsets> kPlaces = {0, 1, 2, 2, 3, 0};
    return kPlaces[static_cast<std::size_t>(offset)];
}

// The checkword of an information word, without an offset word: the remainder of m(x) * x^10 by
// g(x) = x^10 + x^8 + x^7 + x^5 + x^4 + x^3 + 1 (2.3).
[[nodiscard]] std::uint16_t Checkword(std::uint16_t information);
// The 26 bits of a block as they are sent, the first one highest.
[[nodiscard]] std::uint32_t Encode(std::uint16_t information, Offset offset);
// What remains of 26 bits when the checkword of their information is taken off: the offset word, if they came
// through unharmed.
[[nodiscard]] std::uint16_t Syndrome(std::uint32_t block);
[[nodiscard]] std::optional<Offset> OffsetOf(std::uint16_t syndrome);

constexpr std::uint16_t InformationOf(std::uint32_t block) {
    return static_cast<std::uint16_t>(block >> kCheckBits);
}

}  // namespace sdr::rds
