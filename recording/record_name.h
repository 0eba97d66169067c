// Names of the recorded files.
#pragma once

#include <windows.h>

#include <cstddef>

// A name of the user's own may be 260 characters long, and the extension's letters come behind it. The device
// refuses a name of that length, so nothing is recorded then.
inline constexpr std::size_t kDefinedNameCapacity = 260 + 1;
inline constexpr std::size_t kRecordPathCapacity = kDefinedNameCapacity + 3;

using RecordPath = WCHAR[kRecordPathCapacity];

// The user's own name with the extension's letters.
void MakeDefinedName(RecordPath& path, const WCHAR* extension);

// A new file in the device's music folder, which is made when it is missing: the tuned channel's name, or its
// frequency, and the first free number ("KORA ONE-0000.amr").
void MakeAutomaticName(RecordPath& path, const WCHAR* extension);

// Replaces the last '?' of the path by the first number, from `number` on, that gives the name of no file;
// the number is padded with zeros to `width` digits. The number used; `number`, and the path as it is,
// without a '?'.
DWORD NumberFileName(RecordPath& path, DWORD number, int width);

bool FileExists(const WCHAR* path);
