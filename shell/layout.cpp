#include "shell/layout.h"

#include <commctrl.h>

#include "channels/channel_list_window.h"
#include "shell/main_state.h"
#include "skin/screen.h"
#include "skin/skin_load.h"

LRESULT LayOutMainWindow(CMainState& state, HWND window) {
    FollowScreen(state.m_skin);
    const SkinRect list = IsPortraitScreen() ? SkinRect{0, 105, 240, 105} : SkinRect{0, 70, 320, 60};
    SetWindowPos(state.m_hListView, nullptr, list.x, list.y, list.cx, list.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowListBackground(state, window);
    SendMessageW(state.m_hListView, LVM_SETCOLUMNWIDTH, 1, LVSCW_AUTOSIZE_USEHEADER);
    return UpdateMainScreen(window);
}

LRESULT UpdateMainScreen(HWND window) {
    InvalidateRect(window, nullptr, FALSE);
    return 0;
}
