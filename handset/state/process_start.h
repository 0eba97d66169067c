// Starting a program of the host.
#pragma once

#include <windows.h>

namespace handset {

// CreateProcessW with all that it takes, and what it gives. Any thread. Under Wine a new process is once in a
// great many starts gone before it has run an instruction of its own, which comes back as
// ERROR_INTERNAL_ERROR; a start that nothing has come of is made again.
template <typename... Arguments>
BOOL StartProcess(Arguments&&... arguments) {
    constexpr int kMostAttempts = 3;
    BOOL started = FALSE;
    for (int attempt = 0; attempt < kMostAttempts && !started; ++attempt) {
        started = CreateProcessW(arguments...);
        if (!started && GetLastError() != ERROR_INTERNAL_ERROR) break;
    }
    return started;
}

}  // namespace handset
