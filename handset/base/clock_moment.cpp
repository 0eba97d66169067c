#include "handset/base/clock_moment.h"

#include <algorithm>

#include "handset/base/calendar.h"

namespace handset {
namespace {

constexpr std::uint64_t kDay = std::uint64_t{10000000} * kSecondsOfDay;
constexpr std::uint64_t kDays = kFirstDayOf10000 - kFirstDayOfFileTimes;
// The last day of 9999; a zone may add most of a day to what is shown.
constexpr std::uint64_t kLatest = (kDays - 1) * kDay - 1;

std::uint64_t Number(const std::uint8_t* bytes) {
    std::uint64_t value = 0;
    for (int i = 8; i-- > 0;) value = value << 8 | bytes[i];
    return value;
}

void PutNumber(std::uint64_t value, std::uint8_t* bytes) {
    for (int i = 0; i < 8; ++i, value >>= 8) bytes[i] = static_cast<std::uint8_t>(value);
}

}  // namespace

std::uint32_t ClampClockRate(std::uint64_t rate) {
    return static_cast<std::uint32_t>(std::clamp<std::uint64_t>(rate, kSlowestClock, kFastestClock));
}

std::uint64_t ShownAt(const ClockMoment& moment, std::uint64_t real) {
    const std::uint64_t rate = ClampClockRate(moment.rate);
    const std::uint64_t shown = std::min(moment.shown, kLatest);
    const bool back = real < moment.real;
    // More than all of the calendar is as much as all of it.
    const std::uint64_t passed = std::min(back ? moment.real - real : real - moment.real, kLatest / rate + 1);
    const std::uint64_t step = passed * rate;
    return back ? shown - std::min(step, shown) : std::min(shown + step, kLatest);
}

StoredMoment Stored(const ClockMoment& moment) {
    StoredMoment bytes{};
    PutNumber(moment.real, bytes.data());
    PutNumber(moment.shown, bytes.data() + 8);
    PutNumber(moment.rate, bytes.data() + 16);
    return bytes;
}

std::optional<ClockMoment> ReadMoment(const std::uint8_t* bytes, std::size_t size) {
    if (size != kStoredMoment_bytes) return std::nullopt;
    return ClockMoment{Number(bytes), Number(bytes + 8), ClampClockRate(Number(bytes + 16))};
}

}  // namespace handset
