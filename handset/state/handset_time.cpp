#include "handset/state/handset_time.h"

#include <cstring>
#include <optional>
#include <string>

#include "handset/base/file_time.h"
#include "handset/base/registry_value.h"
#include "handset/state/handset_state.h"

namespace handset {
namespace {

constexpr wchar_t kZonesKey[] = L"Software\\Microsoft\\Windows NT\\CurrentVersion\\Time Zones\\";

// The value "TZI" of a zone's key.
struct ZoneRules {
    LONG bias, standardBias, daylightBias;
    SYSTEMTIME standardDate, daylightDate;
};

// The zone that the handset has been given; nothing when it lives in the host's or there is none of that
// name.
std::optional<TIME_ZONE_INFORMATION> OwnZone() {
    const std::wstring name = StateString(L"TimeZone", L"");
    if (name.empty()) return std::nullopt;
    const auto stored = ReadRegistryValue(HKEY_LOCAL_MACHINE, kZonesKey + name, L"TZI");
    ZoneRules rules = {};
    if (!stored || stored->type != REG_BINARY || stored->data.size() != sizeof rules) return std::nullopt;
    std::memcpy(&rules, stored->data.data(), sizeof rules);
    TIME_ZONE_INFORMATION zone = {};
    zone.Bias = rules.bias;
    zone.StandardBias = rules.standardBias;
    zone.DaylightBias = rules.daylightBias;
    zone.StandardDate = rules.standardDate;
    zone.DaylightDate = rules.daylightDate;
    return zone;
}

using Conversion = BOOL(WINAPI*)(const TIME_ZONE_INFORMATION*, const SYSTEMTIME*, SYSTEMTIME*);

std::uint64_t Converted(Conversion convert, std::uint64_t time) {
    const FILETIME file = FileTime(time);
    SYSTEMTIME from = {};
    SYSTEMTIME to = {};
    FILETIME result = {};
    const auto zone = OwnZone();
    if (!FileTimeToSystemTime(&file, &from) || !convert(zone ? &*zone : nullptr, &from, &to) ||
        !SystemTimeToFileTime(&to, &result)) {
        return time;
    }
    return Ticks(result);
}

}  // namespace

std::uint64_t LocalFromUniversal(std::uint64_t universal) {
    return Converted(SystemTimeToTzSpecificLocalTime, universal);
}

std::uint64_t UniversalFromLocal(std::uint64_t local) {
    return Converted(TzSpecificLocalTimeToSystemTime, local);
}

}  // namespace handset
