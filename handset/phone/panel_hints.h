// What a key or a switch does, said to whoever rests the pointer on it.
#pragma once

#include <windows.h>

#include "handset/phone/panel_picture.h"

namespace panel {

// Belongs to the panel's window, and to its thread. A system without tooltips has none.
class CPanelHints {
  public:
    // The hints of everything that can be pressed, where it lies by now; those before are gone.
    void Fit(HWND panel, const PanelView& view);

  private:
    void Add(HWND panel, const Box& box, const wchar_t* text);

    HWND tips_ = nullptr;  // the system destroys it with the panel, which owns it
    UINT_PTR count_ = 0;
};

}  // namespace panel
