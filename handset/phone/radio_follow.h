// Keeps the radio's windows where the phone's display is, and above the panel.
#pragma once

#include <windows.h>

namespace panel {

class CRadioFollow {
  public:
    // Called on every tick, and when the panel has moved: `display` is the display on the host's screen.
    void Follow(HWND panel, const RECT& display);
    // Opens the panel's window where the display is, or closes it again.
    void OpenDisplay(HWND panel, bool open, const RECT& display);

  private:
    HWND followed_ = nullptr;
    POINT origin_ = {};
    RECT hole_ = {};
};

}  // namespace panel
