// The space that is left for recordings. Any thread.
#pragma once

#include <windows.h>

#include <cstdint>

// With less than this no recording starts, and a running one is ended.
inline constexpr std::uint64_t kLeastFreeSpace_bytes = 1000000;

// Free bytes where the settings put the recordings: on the storage card for a name of the user's own, else in
// the object store. A volume that cannot be asked, such as a card that is not in, counts as having no limit:
// that it is missing is said in other words. Traced.
std::uint64_t FreeSpaceBytes();

void ShowInsufficientSpace(HWND owner);
