// Values of the handset's part of the host's registry. What was read once is kept until something there
// changes, so that a value that is asked for again and again costs one look at whether anything has changed.
#pragma once

#include <optional>
#include <string>

#include "handset/base/registry_value.h"

namespace handset {

// The value `name` of the key `path` below HKEY_CURRENT_USER, which is the state key or lies below it;
// nothing when the key or the value is not there. Whatever any program has written before the call is seen.
// Any thread; keeps the last error.
[[nodiscard]] std::optional<RegistryValue> ReadStoredValue(const std::wstring& path, const wchar_t* name);
// That of the state key itself.
[[nodiscard]] std::optional<RegistryValue> ReadStateValue(const wchar_t* name);
// Likewise, at next to no cost, for what is asked for with every paint: what was written under a
// CCountedWrite is seen, and what else was written at least two milliseconds before the call.
[[nodiscard]] std::optional<RegistryValue> ReadCountedValue(const wchar_t* name);

}  // namespace handset
