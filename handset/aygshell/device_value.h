// A value of the device's registry, by a root or by a key that the application has opened.
#pragma once

#include <windows.h>

#include <optional>

#include "handset/base/registry_value.h"

namespace handset {

// As it is stored; nothing when the key or the value is not there. A null or empty key is the root itself.
std::optional<RegistryValue> ReadDeviceValue(HKEY root, const wchar_t* key, const wchar_t* name);

}  // namespace handset
