#include "recording/record_name.h"

#include <cstdint>
#include <cwchar>

#include <regext.h>
#include <strsafe.h>

#include "channels/stored_name.h"
#include "shell/app_block.h"
#include "shell/settings_key.h"
#include "tuner/frequency.h"

namespace {

constexpr int kMusicFolder = 13;  // CSIDL_MYMUSIC
constexpr int kNumberWidth = 4;

void Append(RecordPath& path, const WCHAR* text) {
    StringCchCatW(path, kRecordPathCapacity, text);
}

// The channel's name in the selected list, else the frequency.
void AppendStation(RecordPath& path) {
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    WCHAR name[kChannelTextCapacity];
    const bool stored = FindStoredName(channel, kShownGroupCapacity, name);
    Append(path, stored ? name : PlainFrequencyText(channel).sz);
}

}  // namespace

void MakeDefinedName(RecordPath& path, const WCHAR* extension) {
    path[0] = L'\0';
    RegistryGetString(HKEY_CLASSES_ROOT, kSettingsKey, kDefineFileName, path, kDefinedNameCapacity);
    // Kept: no point is put before the extension; the chosen name brings its own.
    Append(path, extension);
}

void MakeAutomaticName(RecordPath& path, const WCHAR* extension) {
    path[0] = L'\0';
    SHGetSpecialFolderPath(nullptr, path, kMusicFolder, TRUE);
    Append(path, L"\\");
    AppendStation(path);
    Append(path, L"-?.");
    Append(path, extension);
    NumberFileName(path, 0, kNumberWidth);
}

DWORD NumberFileName(RecordPath& path, DWORD number, int width) {
    WCHAR* mark = std::wcsrchr(path, L'?');
    if (mark == nullptr) return number;
    *mark = L'\0';
    const WCHAR* rest = mark + 1;
    RecordPath candidate;
    do {
        StringCchPrintfW(candidate, kRecordPathCapacity, L"%s%0*u%s", path, width, number, rest);
        ++number;
    } while (FileExists(candidate));
    StringCchCopyW(path, kRecordPathCapacity, candidate);
    return number - 1;
}

bool FileExists(const WCHAR* path) {
    return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}
