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

// Counted from outside: the radio is not disturbed.
ObjectCounts CountObjects(const Radio& radio);

}  // namespace test
