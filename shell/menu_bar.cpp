#include "shell/menu_bar.h"

#include <aygshell.h>
#include <commctrl.h>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/commands.h"
#include "shell/main_state.h"

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

void EnableMenuItems(CMainState&, HMENU menu) { GreyMissingCommands(menu); }
