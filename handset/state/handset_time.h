// The handset's local time: universal time with the time zone's rules for that date, daylight saving
// included. The zone is the host's own, or the one of the host's zones that the state value TimeZone names
// ("W. Europe Standard Time"). Host code only. Times are FILETIME units of 100 ns; the conversion keeps whole
// milliseconds.
#pragma once

#include <windows.h>

#include <cstdint>

namespace handset {

// The host's own FileTimeToLocalFileTime takes what holds today for every date.
std::uint64_t LocalFromUniversal(std::uint64_t universal);
// A local time that daylight saving leaves out counts as one of standard time.
std::uint64_t UniversalFromLocal(std::uint64_t local);

}  // namespace handset
