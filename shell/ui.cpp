#include "shell/ui.h"

#include "channels/channel_list_notify.h"
#include "resources/resource_ids.h"
#include "shell/activation.h"
#include "shell/app_block.h"
#include "shell/button_menu.h"
#include "shell/commands.h"
#include "shell/creation.h"
#include "shell/headset.h"
#include "shell/keys.h"
#include "shell/layout.h"
#include "shell/main_state.h"
#include "shell/menu_bar.h"
#include "shell/messages.h"
#include "shell/phone_calls.h"
#include "shell/popup_menu.h"
#include "shell/scan_finished.h"
#include "shell/shutdown.h"
#include "shell/texts.h"
#include "skin/skin_window.h"
#include "tuner/auto_scan.h"
#include "tuner/bluetooth.h"
#include "tuner/frequency_display.h"

namespace {

// High word of WM_COMMAND from the accelerator table; a menu's is 0.
constexpr WORD kFromAccelerator = 1;

using Handler = LRESULT (*)(CMainState&, HWND, UINT, WPARAM, LPARAM);

LRESULT ToSkin(CMainState& state, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    return SkinWindowProc(state.m_skin, hwnd, message, wParam, lParam);
}

LRESULT OnPaint(CMainState& state, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = ToSkin(state, hwnd, message, wParam, lParam);
    RefreshFrequencyDisplay(state);
    RepaintScanProgress(state);
    return result;
}

LRESULT OnDestroy(CMainState& state, HWND hwnd, UINT, WPARAM, LPARAM) {
    ShutDown(state, hwnd);
    return 0;
}

LRESULT OnSize(CMainState& state, HWND hwnd, UINT, WPARAM, LPARAM) {
    return LayOutMainWindow(state, hwnd);
}

LRESULT OnActivate(CMainState& state, HWND hwnd, UINT, WPARAM wParam, LPARAM lParam) {
    HandleActivation(state, hwnd, wParam, lParam);
    return 0;
}

LRESULT OnSettingChange(CMainState&, HWND hwnd, UINT, WPARAM wParam, LPARAM lParam) {
    SHHandleWMSettingChange(hwnd, wParam, lParam, &g_app.activateInfo);
    return 0;
}

LRESULT OnNotify(CMainState& state, HWND hwnd, UINT, WPARAM wParam, LPARAM lParam) {
    if (wParam != 0) return 0;
    return OnChannelListNotify(state, hwnd, reinterpret_cast<NMHDR*>(lParam));
}

LRESULT OnContextMenu(CMainState& state, HWND hwnd, UINT, WPARAM, LPARAM lParam) {
    ShowChannelPopup(state, hwnd, static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
    return 0;
}

LRESULT OnKeyDown(CMainState& state, HWND hwnd, UINT, WPARAM wParam, LPARAM) {
    HandleKeyDown(state, hwnd, wParam);
    return 0;
}

LRESULT Swallow(CMainState&, HWND, UINT, WPARAM, LPARAM) {
    return 0;
}

LRESULT OnCommand(CMainState& state, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool shortcut = HIWORD(wParam) == kFromAccelerator;
    if ((shortcut ? RunShortcut : RunCommand)(state, hwnd, LOWORD(wParam))) return 0;
    return DefWindowProcW(hwnd, message, wParam, lParam);
}

LRESULT OnInitMenuPopup(CMainState& state, HWND, UINT, WPARAM wParam, LPARAM) {
    EnableMenuItems(reinterpret_cast<HMENU>(wParam));
    ShowButtonStates(state, reinterpret_cast<HMENU>(wParam));
    return 0;
}

LRESULT OnScanFinished(CMainState& state, HWND hwnd, UINT, WPARAM, LPARAM) {
    FinishScan(state, hwnd);
    return 0;
}

LRESULT OnControl(CMainState& state, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    return state.OnControl(hwnd, message, wParam, lParam);
}

LRESULT OnHeadset(CMainState&, HWND hwnd, UINT, WPARAM wParam, LPARAM) {
    OnHeadsetChanged(hwnd, wParam);
    return 0;
}

LRESULT OnBluetooth(CMainState&, HWND, UINT, WPARAM wParam, LPARAM) {
    OnBluetoothChanged(static_cast<DWORD>(wParam));
    return 0;
}

LRESULT OnPhone(CMainState& state, HWND hwnd, UINT, WPARAM wParam, LPARAM) {
    OnPhoneChanged(state, hwnd, static_cast<DWORD>(wParam));
    return 0;
}

LRESULT OnAFSwitched(CMainState&, HWND hwnd, UINT, WPARAM, LPARAM) {
    ShowText(hwnd, IDS_AF_SWITCHED, L"FM", MB_TOPMOST);
    return 0;
}

// A key of the skin that is held. Disabling the window took the stylus away, so that nobody lets the key go.
LRESULT OnTimer(CMainState& state, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    if (IsWindowEnabled(hwnd)) return ToSkin(state, hwnd, message, wParam, lParam);
    KillTimer(hwnd, wParam);
    return 0;
}

struct MessageRow {
    UINT uFirst, uLast;
    Handler handler;
    // What the user does. It has no effect while the window is disabled, because a scan or a box has the
    // radio: the soft keys are a window of their own, which disabling does not reach.
    bool bFromUser = false;
};
constexpr bool kFromUser = true;

// clang-format off
constexpr MessageRow kMessages[] = {
    {WM_DESTROY,           WM_DESTROY,           OnDestroy},
    {WM_SIZE,              WM_SIZE,              OnSize},
    {WM_ACTIVATE,          WM_ACTIVATE,          OnActivate},
    {WM_PAINT,             WM_PAINT,             OnPaint},
    {WM_SETTINGCHANGE,     WM_SETTINGCHANGE,     OnSettingChange},
    {WM_NOTIFY,            WM_NOTIFY,            OnNotify},
    {WM_CONTEXTMENU,       WM_CONTEXTMENU,       OnContextMenu, kFromUser},
    {WM_KEYDOWN,           WM_KEYDOWN,           OnKeyDown, kFromUser},
    {WM_KEYUP,             WM_KEYUP,             Swallow, kFromUser},
    {WM_COMMAND,           WM_COMMAND,           OnCommand, kFromUser},
    {WM_TIMER,             WM_TIMER,             OnTimer},
    {WM_INITMENUPOPUP,     WM_INITMENUPOPUP,     OnInitMenuPopup, kFromUser},
    {WM_MOUSEMOVE,         WM_LBUTTONUP,         ToSkin, kFromUser},
    {WM_AUTOSCAN_FINISHED, WM_AUTOSCAN_FINISHED, OnScanFinished},
    {WM_SKIN_SLIDER,       WM_SKIN_CLICK,        OnControl},
    {WM_SKIN_SETPOS,       WM_SKIN_GETPOS,       ToSkin},
    {WM_HEADSET_CHANGED,   WM_HEADSET_CHANGED,   OnHeadset},
    {WM_BLUETOOTH_CHANGED, WM_BLUETOOTH_CHANGED, OnBluetooth},
    {WM_PHONE_CHANGED,     WM_PHONE_CHANGED,     OnPhone},
    {WM_AF_SWITCHED,       WM_AF_SWITCHED,       OnAFSwitched},
};
// clang-format on

bool TakesInput(const CMainState& state, HWND window) {
    return IsWindowEnabled(window) && !state.m_scan.bEndNow;
}

const MessageRow* FindMessage(UINT message) {
    for (const MessageRow& row : kMessages) {
        if (row.uFirst <= message && message <= row.uLast) return &row;
    }
    return nullptr;
}

}  // namespace

LRESULT CALLBACK WndProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    // The creation handler stores the main state; what arrives before it is the default procedure's.
    if (message == WM_CREATE) return OnCreate(hwnd, *reinterpret_cast<CREATESTRUCTW*>(lParam)) ? 0 : -1;

    const MessageRow* row = FindMessage(message);
    CMainState* state = MainStateOf(hwnd);
    if (row == nullptr || state == nullptr) return DefWindowProcW(hwnd, message, wParam, lParam);
    if (row->bFromUser && !TakesInput(*state, hwnd)) return 0;
    return row->handler(*state, hwnd, message, wParam, lParam);
}
