// The power manager of Windows CE 5.2: system power states and their names.
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

// Asks for a system power state, by name or (name NULL) by flags. ERROR_SUCCESS or an error code. The
// desktop declares another call of this name, hence the one in C++ differs. Any thread.
DWORD WINAPI CeSetSystemPowerState(LPCWSTR name, DWORD flags, DWORD options)
    WINCEOEM_NAME("SetSystemPowerState");
#define SetSystemPowerState CeSetSystemPowerState

// Tells the power manager what a program needs. PPN_UNATTENDEDMODE: with data TRUE the device may run with its
// display off instead of suspending; each TRUE is taken back by one FALSE. FALSE for an unknown message.
#define PPN_UNATTENDEDMODE 0x00000003
BOOL WINAPI PowerPolicyNotify(DWORD message, DWORD data);

#ifdef __cplusplus
}
#endif
