// Disabled windows: they are never the active one, as on the device, where the window that owns a box stays
// in the back for as long as it is disabled.
#pragma once

#include <windows.h>

namespace coredll {

// Refuses the activation of disabled windows by the calling thread, from the first call on. The host
// activates the owner of a box that closes even while it is disabled, and with it whatever has its focus.
void KeepDisabledWindowsInactive();

// Counts a window as disabled also while the host has it enabled: it enables the owner of a box that closes.
// Each call with true is taken back by one with false.
void HoldDisabled(HWND window, bool hold);

}  // namespace coredll
