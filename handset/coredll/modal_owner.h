// The owner of a modal box or dialog, for the length of a scope.
#pragma once

#include <windows.h>

#include "handset/coredll/disabled_windows.h"

namespace coredll {

// The device leaves an owner disabled that was disabled before its box came, and gives the activation to
// another window when the box closes; the host may enable the owner, and activates it from the box's thread.
class ModalOwner {
  public:
    explicit ModalOwner(HWND owner)
        : disabled_(owner != nullptr && !IsWindowEnabled(owner) ? owner : nullptr) {
        KeepDisabledWindowsInactive();
        if (disabled_ != nullptr) HoldDisabled(disabled_, true);
    }
    ~ModalOwner() {
        if (disabled_ == nullptr) return;
        EnableWindow(disabled_, FALSE);
        HoldDisabled(disabled_, false);
    }
    ModalOwner(const ModalOwner&) = delete;
    ModalOwner& operator=(const ModalOwner&) = delete;

  private:
    HWND disabled_;
};

}  // namespace coredll
