// The programme types of IEC 62106 (annex F).
#include "handset/fmdevice/band/pty_names.h"

#include <charconv>
#include <iterator>

#include "handset/base/ascii.h"

namespace fm {
namespace {

// clang-format off
constexpr std::string_view kNames[] = {
    "None",             "News",             "Current Affairs",  "Information",
    "Sport",            "Education",        "Drama",            "Cultures",
    "Science",          "Varied Speech",    "Pop Music",        "Rock Music",
    "Easy Listening",   "Light Classics M", "Serious Classics", "Other Music",
    "Weather & Metr",   "Finance",          "Children's Progs", "Social Affairs",
    "Religion",         "Phone In",         "Travel & Touring", "Leisure & Hobby",
    "Jazz Music",       "Country Music",    "National Music",   "Oldies Music",
    "Folk Music",       "Documentary",      "Alarm Test",       "Alarm - Alarm !",
};
// clang-format on
static_assert(std::size(kNames) == kProgrammeTypes, "five bits of programme type");

}  // namespace

std::string_view ProgrammeTypeName(int type) {
    return type >= 0 && type < kProgrammeTypes ? kNames[type] : std::string_view();
}

std::optional<int> ProgrammeTypeOf(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size()) {
        return number >= 0 && number < kProgrammeTypes ? std::optional(number) : std::nullopt;
    }
    std::optional<int> found;
    int beginnings = 0;
    for (int type = 0; type < kProgrammeTypes; ++type) {
        if (handset::SameLetters(kNames[type], text)) return type;
        if (text.empty() || !handset::SameLetters(kNames[type].substr(0, text.size()), text)) continue;
        found = type;
        ++beginnings;
    }
    return beginnings == 1 ? found : std::nullopt;
}

}  // namespace fm
