#include "shell/settings_key.h"

#include <regext.h>

namespace {
constexpr WCHAR kSelectedValue[] = L"Selected";
}

DWORD ReadSetting(const WCHAR* value) {
    DWORD data = 0;
    RegistryGetDWORD(HKEY_CLASSES_ROOT, kSettingsKey, value, &data);
    return data;
}

void WriteSetting(const WCHAR* value, DWORD data) {
    RegistrySetDWORD(HKEY_CLASSES_ROOT, kSettingsKey, value, data);
}

bool ReadSelectedGroup(WCHAR* name, UINT capacity) {
    name[0] = L'\0';
    return SUCCEEDED(RegistryGetString(HKEY_CLASSES_ROOT, kSettingsKey, kSelectedValue, name, capacity));
}

void WriteSelectedGroup(const WCHAR* name) {
    RegistrySetString(HKEY_CLASSES_ROOT, kSettingsKey, kSelectedValue, name);
}
