// Checkwords by table: the code is linear, so a word's checkword is the sum of those of its two bytes.
#include "handset/fmdevice/sdr/rds/block_code.h"

namespace sdr::rds {
namespace {

constexpr std::uint32_t kGenerator = 0x5B9;
constexpr std::uint32_t kCheckMask = (1u << kCheckBits) - 1;

constexpr std::uint16_t Remainder(std::uint32_t information) {
    std::uint32_t rest = information << kCheckBits;
    for (std::uint32_t bit = kBlockBits; bit-- > kCheckBits;) {
        if (rest >> bit & 1u) rest ^= kGenerator << (bit - kCheckBits);
    }
    return static_cast<std::uint16_t>(rest);
}

struct ByteTables {
    std::array<std::uint16_t, 256> low{};
    std::array<std::uint16_t, 256> high{};
};

constexpr ByteTables MakeTables() {
    ByteTables tables;
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        tables.low[byte] = Remainder(byte);
        tables.high[byte] = Remainder(byte << 8);
    }
    return tables;
}

constexpr ByteTables kTables = MakeTables();

}  // namespace

std::uint16_t Checkword(std::uint16_t information) {
    return kTables.low[information & 0xFFu] ^ kTables.high[information >> 8];
}

std::uint32_t Encode(std::uint16_t information, Offset offset) {
    const std::uint32_t check = static_cast<std::uint32_t>(Checkword(information)) ^ OffsetWord(offset);
    return static_cast<std::uint32_t>(information) << kCheckBits | check;
}

std::uint16_t Syndrome(std::uint32_t block) {
    return static_cast<std::uint16_t>((block ^ Checkword(InformationOf(block))) & kCheckMask);
}

std::optional<Offset> OffsetOf(std::uint16_t syndrome) {
    for (std::size_t i = 0; i < kOffsets; ++i) {
        if (kOffsetWords[i] == syndrome) return static_cast<Offset>(i);
    }
    return std::nullopt;
}

}  // namespace sdr::rds
