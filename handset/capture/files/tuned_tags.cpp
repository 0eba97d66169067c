#include "handset/capture/files/tuned_tags.h"

#include <cstdio>

#include "handset/base/file_time.h"
#include "handset/base/utf8.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/fmdevice/tuned_station.h"
#include "handset/state/handset_time.h"

namespace capture {
namespace {

TunedTo Tuned() {
    TunedStation station;
    if (!HandsetTunedStation(&station)) return {};
    std::string name = station.name;
    name.resize(name.find_last_not_of(' ') + 1);
    return {station.channel_10kHz, name};
}

std::string Now() {
    SYSTEMTIME now;
    HandsetLocalTime(&now);
    char text[32];
    std::snprintf(text, sizeof text, "%04u-%02u-%02uT%02u:%02u:%02u", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    return text;
}

}  // namespace

RecordingTags TagsNow(const std::wstring& path) {
    return TagsOf(handset::Utf8(path), Tuned(), Now());
}

RecordingTags TagsAtEnd(const std::wstring& path, const RecordingTags& begun) {
    if (!begun.station.empty()) return begun;
    const RecordingTags now = TagsOf(handset::Utf8(path), Tuned(), begun.date);
    return now.frequency == begun.frequency ? now : begun;
}

FILETIME HandsetFileTime() {
    SYSTEMTIME now;
    HandsetLocalTime(&now);
    FILETIME local = {};
    SystemTimeToFileTime(&now, &local);
    return handset::FileTime(handset::UniversalFromLocal(handset::Ticks(local)));
}

}  // namespace capture
