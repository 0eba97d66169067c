// The registry key of the radio's settings, which is the tuner device's class key, and the selected group.
#pragma once

#include <windows.h>

#include "tuner/fm_device.h"

inline constexpr const WCHAR* kSettingsKey = kFMDeviceKey;

// Reads the name of the selected channel group, at most `capacity` characters; "" and false when there is
// none. Read each time it is needed, never kept.
bool ReadSelectedGroup(WCHAR* name, UINT capacity);
void WriteSelectedGroup(const WCHAR* name);
