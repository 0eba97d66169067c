// What a running process holds, and what it has done.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

namespace test {

std::size_t ThreadsOf(DWORD process);
std::size_t HandlesOf(DWORD process);
// How long a process has been there, what it has done and how many threads it has, in words: one that never
// got beyond its start looks otherwise than one that cannot end.
std::string LookOfProcess(DWORD process);

}  // namespace test
