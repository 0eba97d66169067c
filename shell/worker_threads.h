// Stopping the worker threads: for a while, or until they have ended.
#pragma once

#include <windows.h>

// Suspends a thread. The platform refuses to while the thread is in a call of its kernel, so it is asked
// again, some two seconds long; whoever sends the caller's windows something meanwhile is answered. False
// when the thread has ended, or every attempt was refused.
bool SuspendWorker(HANDLE thread);

// Waits until the object is signalled, the time is over, or another thread has sent this one's windows
// something, which is answered: the two would else wait for each other. True when nothing is left to wait
// for.
bool WaitAnswering(HANDLE object, DWORD time_ms);

// Waits for the thread's end, without a time-out.
void JoinWorker(HANDLE thread);
