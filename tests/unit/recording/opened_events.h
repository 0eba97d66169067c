// The named events that the program under test opens. It leaves them open; the tests close them behind it.
#pragma once

#include <windows.h>

#include <vector>

namespace test {

// Since the last CloseOpenedEvents.
const std::vector<HANDLE>& OpenedEvents();
void CloseOpenedEvents();
// Opens one for the test itself; null when there is none of this name.
HANDLE OpenForTest(const WCHAR* name);

}  // namespace test
