#include "recording/record_settings.h"

#include "recording/capture_format.h"
#include "shell/settings_key.h"

namespace {

// By "RecordAudioType"; any other value is the first.
// clang-format off
constexpr RecordFormat kFormats[] = {
    {kFormatAmr,         L"amr"},
    {kFormatWav,         L"wav"},
    {kFormatWav22Stereo, L"wav"},
};
// clang-format on

}  // namespace

const RecordFormat& ReadRecordFormat() {
    const DWORD type = ReadSetting(kRecordAudioType);
    return kFormats[type < ARRAYSIZE(kFormats) ? type : 0];
}
