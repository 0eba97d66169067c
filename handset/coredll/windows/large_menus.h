// Menus on a display of twice the pixels: the host's menus know one size alone, so the handset draws the
// entries of one that is open there.
#pragma once

#include <windows.h>

#include <list>
#include <string>

#include "handset/base/owned.h"

namespace coredll {

// While it lives, a menu and those that open from it are `scale` times as large; at 1 they are the host's.
// The window that the menu speaks to is one of the calling thread's.
class CLargeMenus {
  public:
    CLargeMenus(HMENU menu, HWND window, int scale);
    ~CLargeMenus();
    CLargeMenus(const CLargeMenus&) = delete;
    CLargeMenus& operator=(const CLargeMenus&) = delete;

    // Before the program hears of them, or behind it.
    void OnPopup(HMENU menu);
    bool OnMeasure(MEASUREITEMSTRUCT& measure) const;
    bool OnDraw(const DRAWITEMSTRUCT& draw) const;
    [[nodiscard]] LRESULT PassOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const;

  private:
    struct Entry {
        HMENU menu;
        std::wstring text;
        UINT type;
        ULONG_PTR data;
    };
    void Take(HMENU menu);
    void GiveBack(const Entry& entry) const;
    [[nodiscard]] const Entry* Find(ULONG_PTR data) const;

    HWND window_ = nullptr;
    int scale_;
    WNDPROC before_ = nullptr;
    handset::OwnedFont font_;
    std::list<Entry> entries_;
};

}  // namespace coredll
