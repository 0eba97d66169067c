#include "shell/menu_bar.h"

#include <aygshell.h>
#include <commctrl.h>

#include <initializer_list>

#include "channels/stored_name.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/button_menu.h"

namespace {

HMENU SoftKeyMenu(HWND menuBar, int index) {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_LPARAM | TBIF_BYINDEX;
    SendMessageW(menuBar, TB_GETBUTTONINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
    return reinterpret_cast<HMENU>(info.lParam);
}

}  // namespace

HWND CreateMainMenuBar(HWND window) {
    SHMENUBARINFO info = {};
    info.cbSize = sizeof info;
    info.hwndParent = window;
    info.dwFlags = SHCMBF_HIDESIPBUTTON;
    info.nToolBarId = IDM_MAIN;
    info.hInstRes = g_app.hInstance;
    SHCreateMenuBar(&info);
    g_app.hLeftSoftKeyMenu = SoftKeyMenu(info.hwndMB, 0);
    g_app.hRightSoftKeyMenu = SoftKeyMenu(info.hwndMB, 1);
    return info.hwndMB;
}

void EnableMenuItems(HMENU menu) {
    std::uint32_t channel = 0;
    if (g_app.pFMDevice != nullptr) g_app.pFMDevice->GetChannel(&channel);
    WCHAR name[kChannelTextCapacity];
    const bool stored = FindStoredName(channel, kGroupNameCapacity, name);
    EnableMenuItem(menu, IDC_ADD_CURRENT, MF_BYCOMMAND | (stored ? MF_GRAYED : MF_ENABLED));
}

bool IsCommandGrey(const CMainState& state, WORD id) {
    for (const HMENU menu : {g_app.hLeftSoftKeyMenu, g_app.hRightSoftKeyMenu}) {
        EnableMenuItems(menu);
        ShowButtonStates(state, menu);
        MENUITEMINFOW item = {};
        item.cbSize = sizeof item;
        item.fMask = MIIM_STATE;
        if (GetMenuItemInfoW(menu, id, FALSE, &item) && (item.fState & MFS_GRAYED) != 0) return true;
    }
    return false;
}
