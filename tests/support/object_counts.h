// What a running radio holds: handles, and drawing objects as COREDLL counts them.
#pragma once

#include <windows.h>

#include "tests/support/radio.h"

namespace test {

// ~0: nobody could be asked.
struct ObjectCounts {
    DWORD handles;
    DWORD gdiObjects;
};

// The first count costs the radio the memory of a thread.
ObjectCounts CountObjects(const Radio& radio);

}  // namespace test
