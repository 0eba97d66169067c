// What COREDLL offers to the handset's other DLLs (not to the application: the import library that the
// application is linked against leaves out every name that begins with "Handset").
#pragma once

#include <windows.h>

#include <cstdint>

extern "C" {

// Marks the calling thread as inside a platform call, for SuspendThread. `mayWait`: the call may block for
// long (a wait, a message sent to another thread). The thread parks here, and again on leaving, while it is
// suspended; a call inside another does not park, as the outer one may hold a lock. An exception that jumps
// out of a call needs no leaving; for that both are called from the function that is the platform call, as
// CPlatformCall does. Every thread; keeps the last error.
void WINAPI HandsetEnterCall(BOOL mayWait);
void WINAPI HandsetLeaveCall(void);

// Milliseconds on the handset's clock since the process started (not wrapped to 32 bits).
std::uint64_t WINAPI HandsetMilliseconds(void);
// The real milliseconds that a handset time-out takes; INFINITE stays INFINITE, and what is not 0 is at
// least 1.
DWORD WINAPI HandsetRealTimeout(DWORD handset_ms);
// Handset seconds per real second, 1 to 3600, as they are now: they may change while a program runs.
DWORD WINAPI HandsetClockRate(void);
// Has `call(context)` called, on a thread of COREDLL's, after every change of the rate; it does not wait.
// Without a call: the context is forgotten, and no call of it is under way any more.
void WINAPI HandsetHearOfRates(void(CALLBACK* call)(void*), void* context);

// The handset's local date and time, for a DLL whose own GetLocalTime is the host's.
void WINAPI HandsetLocalTime(SYSTEMTIME* time);

// The rectangle of the handset's display on the host's screen; (0, 0) and the screen's size when no panel
// runs.
void WINAPI HandsetDisplayRect(RECT* rect);
// What the shell's bar leaves of it for windows.
void WINAPI HandsetWorkArea(RECT* rect);

// A dialog that is being made, and again whenever the display has changed: its controls write in the font of
// the display's size. What was made for it goes with the second call, before the dialog does.
void WINAPI HandsetFitDialogFont(HWND dialog);
void WINAPI HandsetForgetDialogFont(HWND dialog);

// True while the phone is suspended: its programs are held, and it makes no sound.
BOOL WINAPI HandsetPhoneSleeps(void);

// The GDI objects (device contexts of windows included) that the process has made through COREDLL and not
// given back.
DWORD WINAPI HandsetGdiObjectCount(void);
// Counts an object that another DLL of the handset has made for the application to delete.
void WINAPI HandsetGdiObjectMade(HANDLE object);

}  // extern "C"

// One platform call of a handset DLL, for the length of a scope.
class CPlatformCall {
  public:
    __attribute__((always_inline)) explicit CPlatformCall(bool mayWait = false) { HandsetEnterCall(mayWait); }
    ~CPlatformCall() { HandsetLeaveCall(); }
    CPlatformCall(const CPlatformCall&) = delete;
    CPlatformCall& operator=(const CPlatformCall&) = delete;
};
