// The registry key of the radio's settings, which is the tuner device's class key, and the selected group.
#pragma once

#include <windows.h>

inline constexpr WCHAR kSettingsKey[] = L"\\CLSID\\{cd0dd476-b0be-48fd-90fe-91fc36ed0a77}";

// Reads the name of the selected channel group, at most `capacity` characters; "" and false when there is
// none. Read each time it is needed, never kept.
bool ReadSelectedGroup(WCHAR* name, UINT capacity);
void WriteSelectedGroup(const WCHAR* name);
