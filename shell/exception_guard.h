// Code that may fault without ending its thread: a driver's access violation, RaiseException, a C++ throw.
#pragma once

#include <windows.h>

// True when the function came back, false when it raised a structured exception; what it held is then lost.
// A C++ exception must not leave the function. Any thread, also one call inside another.
extern "C" BOOL CallUnderGuard(void (*function)(void*), void* argument);

// Runs `action` and accepts every exception. False when there was one.
template <typename Action>
bool RunGuarded(Action action) {
    struct Run {
        Action& action;
        bool bThrew;
    } run = {action, false};
    const auto body = [](void* argument) {
        auto& guarded = *static_cast<Run*>(argument);
        try {
            guarded.action();
        } catch (...) {
            guarded.bThrew = true;
        }
    };
    return CallUnderGuard(body, &run) && !run.bThrew;
}
