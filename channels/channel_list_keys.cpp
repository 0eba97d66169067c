#include "channels/channel_list_keys.h"

#include <commctrl.h>

namespace {

constexpr LONG kVisibleHeightPortrait = 105;
constexpr LONG kVisibleHeightLandscape = 60;
constexpr LONG kRowReach = 15;
constexpr WPARAM kFrequencyColumn = 1;

WNDPROC g_listProcedure = nullptr;
ListEdgeHints g_hints = {};

// Volume keys and Return work while the list has the focus.
bool BelongsToMainWindow(WPARAM key) {
    return key == VK_RETURN || key == VK_LEFT || key == VK_RIGHT;
}

LRESULT HandToMainWindow(HWND list, WPARAM wParam, LPARAM lParam) {
    const HWND window = GetParent(list);
    SetFocus(window);
    PostMessageW(window, WM_KEYDOWN, wParam, lParam);
    return 0;
}

void RedrawRow(HWND list, int row) {
    SendMessageW(list, LVM_REDRAWITEMS, static_cast<WPARAM>(row), static_cast<LPARAM>(row));
}

LONG VisibleHeight() {
    return GetSystemMetrics(SM_CYSCREEN) > GetSystemMetrics(SM_CXSCREEN) ? kVisibleHeightPortrait
                                                                         : kVisibleHeightLandscape;
}

void FindEdges(HWND list) {
    const int count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    const LONG height = VisibleHeight();
    g_hints.bMoreAbove = FALSE;
    g_hints.bMoreBelow = FALSE;
    for (int row = 0; row < count; ++row) {
        POINT position = {};
        SendMessageW(list, LVM_GETITEMPOSITION, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&position));
        if (position.y == 0) {
            g_hints.nFirstRow = row;
            if (row == 0) continue;
            g_hints.bMoreAbove = TRUE;
            RedrawRow(list, row);
        } else if (position.y < height && position.y + kRowReach >= height) {
            g_hints.nLastRow = row;
            if (row == count - 1) continue;
            g_hints.bMoreBelow = TRUE;
            RedrawRow(list, row);
            break;
        }
    }
}

bool IsInput(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
           (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || message == WM_CONTEXTMENU;
}

LRESULT CALLBACK ListProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
    // A scan has the channels, or a box the user: what was pressed before has no effect any more.
    if (IsInput(message) && (GetWindowLongW(GetParent(list), GWL_STYLE) & WS_DISABLED) != 0) return 0;
    if (message == WM_KEYDOWN && BelongsToMainWindow(wParam)) return HandToMainWindow(list, wParam, lParam);
    // An accelerator's command goes to the window with the focus; the commands are the main window's.
    if (message == WM_COMMAND && lParam == 0) return SendMessageW(GetParent(list), message, wParam, lParam);
    if (message == WM_KEYUP && (wParam == VK_UP || wParam == VK_DOWN)) FindEdges(list);
    const LRESULT result = CallWindowProcW(g_listProcedure, list, message, wParam, lParam);
    // The vertical bar comes and goes with the rows, and takes from the frequencies' room or gives it back.
    if (message == WM_SIZE) {
        SendMessageW(list, LVM_SETCOLUMNWIDTH, kFrequencyColumn, LVSCW_AUTOSIZE_USEHEADER);
    }
    return result;
}

}  // namespace

void SubclassChannelList(HWND list) {
    const auto procedure = reinterpret_cast<LONG_PTR>(&ListProc);
    g_listProcedure = reinterpret_cast<WNDPROC>(SetWindowLongW(list, GWL_WNDPROC, procedure));
}

const ListEdgeHints& ChannelListHints() {
    return g_hints;
}
