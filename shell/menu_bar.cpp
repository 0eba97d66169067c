#include "shell/menu_bar.h"

#include <aygshell.h>
#include <commctrl.h>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/settings_key.h"

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

void EnableMenuItems(CMainState& state, HMENU menu) {
    std::uint32_t channel = 0;
    if (g_app.pFMDevice != nullptr) g_app.pFMDevice->GetChannel(&channel);
    WCHAR group[kGroupNameCapacity] = L"";
    ReadSelectedGroup(group, kGroupNameCapacity);
    WCHAR name[kChannelTextCapacity] = L"";
    const bool stored = state.m_ChannelDB.CEDB_FindChannelName(group, channel, name) != 0;
    EnableMenuItem(menu, IDC_ADD_CURRENT, MF_BYCOMMAND | (stored ? MF_GRAYED : MF_ENABLED));
}
