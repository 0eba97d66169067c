// The registry key of the radio's settings, which is the tuner device's class key, its values, and the
// selected group. Everything is read each time it is needed, never kept. Any thread.
#pragma once

#include <windows.h>

#include "tuner/fm_device.h"

inline constexpr const WCHAR* kSettingsKey = kFMDeviceKey;

// clang-format off
inline constexpr const WCHAR* kRecordAudioType    = L"RecordAudioType";  // 0 AMR, 1 WAV 8 kHz, 2 WAV 22 kHz
inline constexpr const WCHAR* kSaveFileType       = L"SaveFileType";     // 0 music folder, else kDefineFileName
inline constexpr const WCHAR* kDefineFileName     = L"DefineFileName";   // text, at most 260 characters
inline constexpr const WCHAR* kEnableMute         = L"EnableMute";       // mute while the signal is weak
inline constexpr const WCHAR* kEnableRDSPSPTY     = L"EnableRDSPSPTY";   // show RDS texts
inline constexpr const WCHAR* kEnableAFAutoSwitch = L"EnableAFAutoSwitch";
// clang-format on

// A number; 0 when it is missing.
[[nodiscard]] DWORD ReadSetting(const WCHAR* value);
void WriteSetting(const WCHAR* value, DWORD data);

// Reads the name of the selected channel group, at most `capacity` characters; "" and false when there is
// none.
bool ReadSelectedGroup(WCHAR* name, UINT capacity);
void WriteSelectedGroup(const WCHAR* name);
