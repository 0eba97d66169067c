// The edge of a module: where a program or the host calls code of the handset. No C++ exception crosses it; a
// call that met one fails as it would for any other reason. At an edge are the exports of the handset's DLLs,
// the methods of its COM objects, the procedures that the host calls back (of windows, hooks, timers and
// enumerations) and the starts of threads. Each is written as
//
//     BOOL WINAPI DeviceFindClose(HANDLE search) try {
//         …
//     } catch (...) {
//         return handset::EdgeAnswer(FALSE);
//     }
//
// so that what is local to the call, its locks and its mark as a platform call included, is given back before
// it answers. On the way through it costs nothing. Only what has no call in its body, or calls nothing but
// other edges, does without.
//
// What ends here is what C++ throws: std::bad_alloc, mostly, and what a program's own window or thread
// procedure lets out into the call that runs it. A fault, such as an access violation, is none of it: it
// passes, to be handled by the program's guard or to end the program.
#pragma once

#include <windows.h>

#include <thread>
#include <utility>

namespace handset {

// The following three are for the handler of an edge, while it handles the exception. Any thread.

// What the exception says, as an error code: ERROR_NOT_ENOUGH_MEMORY when there was no memory for something,
// or something would have been longer than any memory; ERROR_GEN_FAILURE otherwise. For calls that answer
// with a code.
DWORD EdgeError() noexcept;
// The same for COM: E_OUTOFMEMORY or E_UNEXPECTED. Leaves the last error alone.
HRESULT EdgeResult() noexcept;
// Sets the last error to EdgeError and gives what the call answers when it fails; without an argument 0,
// null, or nothing.
template <typename Answer>
Answer EdgeAnswer(Answer failure) {
    SetLastError(EdgeError());
    return failure;
}
template <typename Answer>
Answer EdgeAnswer() {
    SetLastError(EdgeError());
    return Answer();
}

// The time between two attempts of a thread's work.
inline constexpr DWORD kWorkPause_ms = 50;

// The work of one of the handset's own threads, which nobody asks for an answer: when an exception ends it,
// it is begun again after a pause, for as long as `wanted` says so. So the sound goes on when there is memory
// again. `work` has to leave what is shared in order, as it does when it returns.
template <typename Work, typename Wanted>
void KeepWorking(Work work, Wanted wanted) noexcept {
    do {
        try {
            return work();
        } catch (...) {
            Sleep(kWorkPause_ms);
        }
    } while (wanted());
}

// A thread for such work; nobody but this starts one by std::thread. Throws what std::thread throws.
template <typename Work, typename Wanted>
[[nodiscard]] std::thread WorkerThread(Work work, Wanted wanted) {
    return std::thread(KeepWorking<Work, Wanted>, std::move(work), std::move(wanted));
}

}  // namespace handset
