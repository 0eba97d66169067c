// Starting a program of the host.
#pragma once

#include <windows.h>

namespace handset {

// What `create` gives, which starts a program as CreateProcessW does. Under Wine a new process is once in a
// great many starts gone before it has run an instruction of its own, which comes back as
// ERROR_INTERNAL_ERROR; a start that nothing has come of is made again, twice at most.
template <typename Create>
BOOL StartAgainWhenLost(Create create) {
    constexpr int kMostAttempts = 3;
    BOOL started = FALSE;
    for (int attempt = 0; attempt < kMostAttempts && !started; ++attempt) {
        started = create();
        if (!started && GetLastError() != ERROR_INTERNAL_ERROR) break;
    }
    return started;
}

// CreateProcessW with all that it takes, and what it gives. Any thread.
template <typename... Arguments>
BOOL StartProcess(Arguments&&... arguments) {
    return StartAgainWhenLost([&] { return CreateProcessW(arguments...); });
}

}  // namespace handset
