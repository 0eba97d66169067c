// Waiting on the stand-in's clock, which runs as fast as it can.
#pragma once

#include "tests/native/skin/stand_ins/platform.h"

namespace test {

inline constexpr DWORD kDeadline_ms = 20000;

template <typename Condition>
bool WaitFor(Condition condition, DWORD deadline_ms = kDeadline_ms) {
    for (DWORD left = deadline_ms; left != 0; --left) {
        if (condition()) return true;
        platform::Elapse1ms();
    }
    return condition();
}

}  // namespace test
