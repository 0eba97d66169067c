// A volume's file on the host: where it lies, and how one is made so that it is never seen half made.
#pragma once

#include <windows.h>

#include <string>

#include "handset/coredll/cedb/engine/sort_order.h"

namespace cedb {

// The full host path of a volume's name on the device, one for all ways to spell it. Gives a Win32 error
// code.
DWORD FindVolumeFile(const wchar_t* name, std::wstring* path);

// Prepares the file for being opened, as the flags of CeMountDBVol (without EDB_MOUNT_FLAG) say: makes it,
// replaces it, or looks whether it is a volume. Gives a Win32 error code.
DWORD PrepareVolumeFile(const std::wstring& path, DWORD flags, const CCollator& collator);

// False while the handset is told to fail writes or has no room left.
bool MayWrite(const std::wstring& path);

}  // namespace cedb
