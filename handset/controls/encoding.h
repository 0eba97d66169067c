// What the handset's programs read and write: texts in either encoding, numbers in them, whole files.
#pragma once

#include <optional>
#include <string>

#include "handset/base/number_text.h"
#include "handset/base/utf8.h"

namespace panel {

using handset::ParseNumber;
using handset::Utf8;
using handset::Wide;

// The bytes of a host file; nothing when it cannot be read. Other processes may be writing to it.
std::optional<std::string> ReadWholeFile(const std::wstring& path);
// Makes the file or takes the place of the one that is there: a reader finds the old one or the new one,
// never a part.
bool WriteWholeFile(const std::wstring& path, const std::string& bytes);

}  // namespace panel
