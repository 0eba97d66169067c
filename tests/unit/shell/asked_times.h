// The times that the program under test asks for on the thread of the test: how long to sleep, and the
// periods of timers. They go on to the platform.
#pragma once

#include <windows.h>

#include <vector>

namespace test {

// Notes for as long as it lives; one at a time.
class AskedTimes {
  public:
    AskedTimes();
    ~AskedTimes();
    AskedTimes(const AskedTimes&) = delete;
    AskedTimes& operator=(const AskedTimes&) = delete;

    std::vector<DWORD> sleeps_ms;
    std::vector<UINT> timers_ms;
    const DWORD thread = GetCurrentThreadId();
};

}  // namespace test
