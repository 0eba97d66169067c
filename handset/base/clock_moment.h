// The handset's clock as arithmetic: a moment at which the host's time and the handset's were known, and the
// pace from there on. Portable. Times are units of 100 ns since 1 January 1601, universal time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace handset {

// Handset seconds per real second.
inline constexpr std::uint32_t kSlowestClock = 1;
inline constexpr std::uint32_t kFastestClock = 3600;

// The nearest rate that there is.
[[nodiscard]] std::uint32_t ClampClockRate(std::uint64_t rate);

struct ClockMoment {
    std::uint64_t real;
    std::uint64_t shown;  // what the handset showed then
    std::uint32_t rate;

    bool operator==(const ClockMoment& other) const {
        return real == other.real && shown == other.shown && rate == other.rate;
    }
};

// What the handset shows at a moment of the host's time. The host's clock may have been set back to before
// the moment; the handset's follows it. Never before 1601 nor after 9999, whatever the moment says.
[[nodiscard]] std::uint64_t ShownAt(const ClockMoment& moment, std::uint64_t real);

// A moment as it is stored, all of it in one value so that nobody reads half of a change.
inline constexpr std::size_t kStoredMoment_bytes = 24;
using StoredMoment = std::array<std::uint8_t, kStoredMoment_bytes>;
[[nodiscard]] StoredMoment Stored(const ClockMoment& moment);
// Nothing for what is no moment.
[[nodiscard]] std::optional<ClockMoment> ReadMoment(const std::uint8_t* bytes, std::size_t size);

}  // namespace handset
