// What a running process holds.
#pragma once

#include <windows.h>

#include <cstddef>

namespace test {

std::size_t ThreadsOf(DWORD process);
std::size_t HandlesOf(DWORD process);

}  // namespace test
