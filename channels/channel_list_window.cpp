#include "channels/channel_list_window.h"

#include <commctrl.h>

#include "channels/channel_list_keys.h"
#include "channels/list_selection.h"
#include "channels/list_senders.h"
#include "resources/resource_ids.h"
#include "shell/dialogs.h"
#include "shell/main_state.h"
#include "shell/owned.h"
#include "shell/settings_key.h"
#include "skin/screen.h"
#include "skin/skin_load.h"

namespace {

constexpr DWORD kListStyle = WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SINGLESEL | LVS_NOCOLUMNHEADER;
static_assert(kListStyle == 0x50004005);
// Full-row select, one-click activate, and the device's two own bits, which a desktop list view ignores.
constexpr DWORD kListExtendedStyle = 0x30000060;
constexpr LONG kListFontWeight = 900;

SkinRect ListRect() {
    if (!IsWideScreen()) return {0, 105, GetSystemMetrics(SM_CXSCREEN), 65};
    return IsPortraitScreen() ? SkinRect{0, 105, 240, 105} : SkinRect{0, 70, 320, 60};
}

void InsertColumn(HWND list, int index, int format, int width) {
    LVCOLUMNW column = {};
    column.mask = LVCF_FMT | LVCF_WIDTH;
    column.fmt = format;
    column.cx = width;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

// The part of a bitmap under `rect`, as a bitmap of its own.
HBITMAP CopyOut(HWND window, HBITMAP source, const SkinRect& rect) {
    const WindowDC screen(window);
    const OwnedMemoryDC from(CreateCompatibleDC(screen.get()));
    const OwnedMemoryDC to(CreateCompatibleDC(screen.get()));
    const HBITMAP copy = CreateCompatibleBitmap(screen.get(), rect.cx, rect.cy);
    const SelectObjectGuard selectFrom(from.get(), source);
    const SelectObjectGuard selectTo(to.get(), copy);
    BitBlt(to.get(), 0, 0, rect.cx, rect.cy, from.get(), rect.x, rect.y, SRCCOPY);
    return copy;
}

// On a wide screen the list shows the skin behind it, so that it seems to stand on the same ground.
UINT BackgroundId() {
    if (!IsWideScreen()) return IDB_LIST_BACKGROUND;
    return IsPortraitScreen() ? IDB_BACKGROUND_PORTRAIT : IDB_BACKGROUND_LANDSCAPE;
}

HBITMAP ListBackground(const CMainState& state, HWND window, const SkinRect& rect) {
    const UINT id = BackgroundId();
    OwnedBitmap image = LoadSkinImage(state.m_hInstance, id);
    return id == IDB_LIST_BACKGROUND ? image.release() : CopyOut(window, image.get(), rect);
}

void SetBackground(HWND list, HBITMAP background) {
    LVBKIMAGEW image = {};
    image.ulFlags = LVBKIF_SOURCE_HBITMAP | LVBKIF_STYLE_TILE;
    image.hbm = background;
    SendMessageW(list, LVM_SETBKIMAGEW, 0, reinterpret_cast<LPARAM>(&image));
    SendMessageW(list, LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(CLR_NONE));
}

HFONT CreateListFont() {
    LOGFONTW font = {};
    GetObjectW(GetStockObject(SYSTEM_FONT), sizeof font, &font);
    font.lfWeight = kListFontWeight;
    return CreateFontIndirectW(&font);
}

}  // namespace

bool CreateChannelList(CMainState& state, HWND window) {
    const SkinRect rect = ListRect();
    RegisterControls(ICC_LISTVIEW_CLASSES);
    const HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", kListStyle, rect.x, rect.y, rect.cx, rect.cy,
                                      window, nullptr, state.m_hInstance, &state);
    if (list == nullptr) return false;
    state.m_hListView = list;
    InsertColumn(list, 0, LVCFMT_LEFT, rect.cx / 2);
    InsertColumn(list, 1, LVCFMT_RIGHT, rect.cx / 2);
    const LRESULT style = SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, style | static_cast<LPARAM>(kListExtendedStyle));

    ShowListBackground(state, window);
    state.m_hListFont = CreateListFont();
    state.m_ChannelDB.SetListSender(list, SendToChannelList);
    WCHAR group[kGroupNameCapacity] = L"";
    ReadSelectedGroup(group, kGroupNameCapacity);
    state.m_ChannelDB.CEDB_ShowGroup(kChannelDatabase, group);
    SubclassChannelList(list);
    HighlightTunedChannel(list);
    return true;
}

void ShowListBackground(CMainState& state, HWND window) {
    const UINT id = BackgroundId();
    if (state.m_hListView == nullptr || state.m_uListBackgroundId == id) return;
    const OwnedBitmap previous(state.m_hListBackground);
    state.m_hListBackground = ListBackground(state, window, ListRect());
    state.m_uListBackgroundId = id;
    SetBackground(state.m_hListView, state.m_hListBackground);
}
