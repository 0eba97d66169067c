// The owner of a modal box or dialog, for the length of a scope.
#pragma once

#include <windows.h>

#include "handset/coredll/windows/disabled_windows.h"

namespace coredll {

// The device leaves an owner disabled that was disabled before its box came, and gives the activation to
// another window when the box closes; the host may enable the owner, and activates it from the box's thread.
class CModalOwner {
  public:
    explicit CModalOwner(HWND owner)
        : enabled_(owner != nullptr && IsWindowEnabled(owner) ? owner : nullptr),
          disabled_(enabled_ == nullptr ? owner : nullptr) {
        KeepDisabledWindowsInactive();
        if (disabled_ != nullptr) HoldDisabled(disabled_, true);
    }
    ~CModalOwner() {
        if (disabled_ != nullptr) {
            EnableWindow(disabled_, FALSE);
            HoldDisabled(disabled_, false);
        }
        if (enabled_ != nullptr && !IsWindowEnabled(enabled_)) Free();
    }
    CModalOwner(const CModalOwner&) = delete;
    CModalOwner& operator=(const CModalOwner&) = delete;

  private:
    // Of two boxes one above the other the lower may be answered first: the upper one then leaves the owner
    // disabled, as it found it, and nobody else is left who would free it.
    void Free() const {
        EnableWindow(enabled_, TRUE);
        if (GetActiveWindow() != enabled_) SetActiveWindow(enabled_);
    }

    HWND enabled_;
    HWND disabled_;
};

}  // namespace coredll
