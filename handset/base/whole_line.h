// Logs that several programs write to. Host code only.
#pragma once

#include <windows.h>

#include <cstddef>

namespace handset {

// Writes all of it in one piece. An append is two steps on some hosts, finding the end and writing there, and
// what another program wrote between the two would be lost.
void WriteWhole(HANDLE file, const void* data, std::size_t size);

}  // namespace handset
