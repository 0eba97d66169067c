// Point-to-point message queues of Windows CE: first in, first out, between threads and processes.
#pragma once

#include <windows.h>

#ifndef WINCEOEM_NAME
#define WINCEOEM_NAME(name)
#endif

#ifdef __cplusplus
extern "C" {
#endif

// Options: no memory is set aside beforehand; an end works without one on the other side.
#define MSGQUEUE_NOPRECOMMIT 0x00000001
#define MSGQUEUE_ALLOW_BROKEN 0x00000002
// Of a message: it is read before all that are not alerts.
#define MSGQUEUE_MSGALERT 0x00000001

typedef struct MSGQUEUEOPTIONS_OS {
    DWORD dwSize;         // sizeof(MSGQUEUEOPTIONS), 20
    DWORD dwFlags;        // MSGQUEUE_NOPRECOMMIT | MSGQUEUE_ALLOW_BROKEN
    DWORD dwMaxMessages;  // 0 = no limit
    DWORD cbMaxMessage;   // bytes
    BOOL bReadAccess;     // the end: TRUE to read, FALSE to write
} MSGQUEUEOPTIONS, *LPMSGQUEUEOPTIONS;

typedef struct MSGQUEUEINFO {
    DWORD dwSize;  // sizeof(MSGQUEUEINFO), 28
    DWORD dwFlags;
    DWORD dwMaxMessages;
    DWORD cbMaxMessage;
    DWORD dwCurrentMessages;
    DWORD dwMaxQueueMessages;  // the most that were in it at once
    WORD wNumReaders;
    WORD wNumWriters;
} MSGQUEUEINFO, *LPMSGQUEUEINFO;

// Makes a queue, or opens the one of that name (last error ERROR_ALREADY_EXISTS; its limits stay). The handle
// is one end of it and can be waited for: an end to read while there is a message, an end to write while
// there is room. NULL with ERROR_INVALID_PARAMETER, ERROR_FILENAME_EXCED_RANGE or ERROR_OUTOFMEMORY. All five
// calls: any thread.
HANDLE WINAPI CreateMsgQueue(LPCWSTR name, LPMSGQUEUEOPTIONS options);
// Another end of the queue that `queue` is a handle of in the process `process`. Only dwSize and bReadAccess
// of the options count. NULL with ERROR_INVALID_HANDLE, ERROR_INVALID_PARAMETER or ERROR_OUTOFMEMORY.
HANDLE WINAPI OpenMsgQueue(HANDLE process, HANDLE queue, LPMSGQUEUEOPTIONS options);
// Takes the next message. FALSE with ERROR_TIMEOUT (none came in `milliseconds` of the device's clock),
// ERROR_INSUFFICIENT_BUFFER (the message is taken, and what fits of it is in the buffer),
// ERROR_PIPE_NOT_CONNECTED (it is empty and has no writer, and is not MSGQUEUE_ALLOW_BROKEN),
// ERROR_INVALID_HANDLE (also for an end to write) or ERROR_INVALID_PARAMETER.
BOOL WINAPI ReadMsgQueue(HANDLE queue, LPVOID buffer, DWORD size, LPDWORD read, DWORD milliseconds,
                         DWORD* flags);
// Adds a message. FALSE with ERROR_TIMEOUT (it stayed full), ERROR_INSUFFICIENT_BUFFER (larger than
// cbMaxMessage), ERROR_PIPE_NOT_CONNECTED (it has no reader), ERROR_OUTOFMEMORY, ERROR_INVALID_HANDLE or
// ERROR_INVALID_PARAMETER.
BOOL WINAPI WriteMsgQueue(HANDLE queue, LPVOID data, DWORD size, DWORD milliseconds, DWORD flags);
BOOL WINAPI GetMsgQueueInfo(HANDLE queue, LPMSGQUEUEINFO info);
// Closes an end. Messages are gone with the last one.
BOOL WINAPI CloseMsgQueue(HANDLE queue);

#ifdef __cplusplus
}
#endif
