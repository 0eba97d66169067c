// What a recording that begins now says of itself, by the tuner of this process and the handset's clock.
#pragma once

#include <windows.h>

#include <string>

#include "handset/capture/files/recording_tags.h"

namespace capture {

// `path`: the recording's name on the device.
RecordingTags TagsNow(const std::wstring& path);

// What is known by the end: the name of a station that was not known when the recording began.
RecordingTags TagsAtEnd(const std::wstring& path, const RecordingTags& begun);

// The handset's time, UTC.
FILETIME HandsetFileTime();

}  // namespace capture
