// A value of the device's registry as it is stored.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "handset/state/stored_value.h"

namespace handset {

using RegistryValue = StoredValue;

// The stored value; nothing when the key or the value is not there. A null or empty key is the root itself.
std::optional<RegistryValue> ReadRegistryValue(HKEY root, const wchar_t* key, const wchar_t* name);

// The value as a number (REG_DWORD) or a text (REG_SZ); nothing for any other type.
std::optional<DWORD> AsDword(const RegistryValue& value);
std::optional<std::wstring> AsString(const RegistryValue& value);

}  // namespace handset
