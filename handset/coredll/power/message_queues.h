// The message queues of which this process has handles.
#pragma once

#include <windows.h>

#include <string>

namespace coredll {

// The identifier of the queue that a handle of this process is an end of, and whether it is one to read;
// empty when it is no such handle.
std::wstring QueueOfHandle(HANDLE queue, bool* reads);
// Closes an end. False when the handle is no queue's.
bool CloseQueueHandle(HANDLE queue);

}  // namespace coredll
