// The device's registry as the handset's switches and the command line see it: a subtree of the user's own.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "handset/base/registry_value.h"

namespace panel {

using DeviceValue = handset::RegistryValue;

// The host's key path, below HKEY_CURRENT_USER, of a device key such as "HKLM\System\State\Hardware"
// (HKCR, HKLM, HKCU, HKU or their long names; a backslash at either end is let pass). Nothing for another
// root.
std::optional<std::wstring> HostKeyPath(const std::wstring& deviceKey);

// The calls below take a device key as text; a key with an unknown root is as one that is not there.
bool DeviceKeyExists(const std::wstring& key);
bool CreateDeviceKey(const std::wstring& key);
std::optional<DeviceValue> GetDeviceValue(const std::wstring& key, const std::wstring& value);
// The key is created when it is missing. False when the host's registry refuses.
bool SetDeviceValue(const std::wstring& key, const std::wstring& value, const DeviceValue& data);
bool DeleteDeviceValue(const std::wstring& key, const std::wstring& value);
// With everything below it.
bool DeleteDeviceKey(const std::wstring& key);
std::vector<std::wstring> DeviceSubkeys(const std::wstring& key);
std::vector<std::wstring> DeviceValueNames(const std::wstring& key);

DWORD DeviceDword(const std::wstring& key, const std::wstring& value, DWORD fallback);
std::wstring DeviceString(const std::wstring& key, const std::wstring& value, const std::wstring& fallback);
bool SetDeviceDword(const std::wstring& key, const std::wstring& value, DWORD data);
bool SetDeviceString(const std::wstring& key, const std::wstring& value, const std::wstring& data);

}  // namespace panel
