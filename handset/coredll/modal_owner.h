// The owner of a modal box or dialog, for the length of a scope.
#pragma once

#include <windows.h>

namespace coredll {

// The device leaves an owner disabled that was disabled before its box came; the host may enable it.
class ModalOwner {
  public:
    explicit ModalOwner(HWND owner)
        : disabled_(owner != nullptr && !IsWindowEnabled(owner) ? owner : nullptr) {}
    ~ModalOwner() {
        if (disabled_ != nullptr) EnableWindow(disabled_, FALSE);
    }
    ModalOwner(const ModalOwner&) = delete;
    ModalOwner& operator=(const ModalOwner&) = delete;

  private:
    HWND disabled_;
};

}  // namespace coredll
