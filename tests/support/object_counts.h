// What a running radio holds: handles, and drawing objects as COREDLL counts them.
#pragma once

#include <windows.h>

#include "tests/support/radio.h"

namespace test {

struct ObjectCounts {
    DWORD handles;
    DWORD gdiObjects;  // ~0: COREDLL could not be asked
};

ObjectCounts CountObjects(const Radio& radio);

}  // namespace test
