// A window that answers like the panel: it says where the display is.
#pragma once

#include <windows.h>

class PanelStandIn {
  public:
    // The display's upper left corner, in screen coordinates.
    explicit PanelStandIn(POINT origin);
    ~PanelStandIn();
    PanelStandIn(const PanelStandIn&) = delete;
    PanelStandIn& operator=(const PanelStandIn&) = delete;

  private:
    HWND window_;
};
