// The power manager of Windows CE 5.2: system power states, their notifications, unattended mode.
#pragma once

#include <windows.h>

#ifndef WINCEOEM_NAME
#define WINCEOEM_NAME(name)
#endif

#define POWER_STATE_ON 0x00010000u
#define POWER_STATE_OFF 0x00020000u
#define POWER_STATE_CRITICAL 0x00040000u
#define POWER_STATE_BOOT 0x00080000u
#define POWER_STATE_IDLE 0x00100000u
#define POWER_STATE_SUSPEND 0x00200000u
#define POWER_STATE_UNATTENDED 0x00400000u
#define POWER_STATE_RESET 0x00800000u
#define POWER_STATE_USERIDLE 0x01000000u

#ifdef __cplusplus
extern "C" {
#endif

// Gives the name of the system power state (at most `length` characters, terminator included) and its
// flags. ERROR_SUCCESS, or ERROR_INVALID_PARAMETER, ERROR_INSUFFICIENT_BUFFER. Any thread.
DWORD WINAPI GetSystemPowerState(LPWSTR name, DWORD length, PDWORD flags);

// Asks for a system power state, by name or (name NULL) by flags. A display that is switched off by
// POWER_STATE_IDLE leads to "unattended", with both flags, while a program holds unattended mode.
// ERROR_SUCCESS or an error code. The desktop declares another call of this name, hence the one in C++
// differs. Any thread.
DWORD WINAPI CeSetSystemPowerState(LPCWSTR name, DWORD flags, DWORD options)
    WINCEOEM_NAME("SetSystemPowerState");
#define SetSystemPowerState CeSetSystemPowerState

// What a power notification tells.
#define PBT_TRANSITION 0x00000001         // the system has another power state
#define PBT_RESUME 0x00000002             // it is back from a suspension
#define PBT_POWERSTATUSCHANGE 0x00000004  // never sent by this handset
#define PBT_POWERINFOCHANGE 0x00000008    // never sent by this handset
#define POWER_NOTIFY_ALL 0xFFFFFFFF

// One notification, a message of the queue.
typedef struct _POWER_BROADCAST {
    DWORD Message;              // PBT_…
    DWORD Flags;                // POWER_STATE_… of the new state
    DWORD Length;               // bytes of the state's name, terminator not counted; 0 = no name
    WCHAR SystemPowerState[1];  // the name and a terminator, fewer than MAX_PATH characters
} POWER_BROADCAST, *PPOWER_BROADCAST;

// Has notifications of the kinds `flags` (PBT_…) written to a message queue of which the caller has an end to
// read. The handle is for StopPowerNotifications; NULL with ERROR_INVALID_PARAMETER, ERROR_INVALID_HANDLE,
// ERROR_ACCESS_DENIED or ERROR_OUTOFMEMORY. A message that does not fit into a full queue is lost. Any
// thread.
HANDLE WINAPI RequestPowerNotifications(HANDLE queue, DWORD flags);
// ERROR_SUCCESS, or ERROR_INVALID_PARAMETER for a handle that is none.
DWORD WINAPI StopPowerNotifications(HANDLE notifications);

// Tells the power manager what a program needs. PPN_UNATTENDEDMODE: with data TRUE the device may run with
// its display off instead of suspending; each TRUE is taken back by one FALSE, or by the program's end. FALSE
// for an unknown message.
#define PPN_UNATTENDEDMODE 0x00000003
BOOL WINAPI PowerPolicyNotify(DWORD message, DWORD data);

#ifdef __cplusplus
}
#endif
