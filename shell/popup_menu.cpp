#include "shell/popup_menu.h"

#include <commctrl.h>
#include <shellapi.h>
#include <strsafe.h>

#include "channels/channel_dialog.h"
#include "channels/list_senders.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/marked_row.h"
#include "shell/owned.h"
#include "shell/texts.h"

namespace {

constexpr UINT kDeleteChannel = 502;
constexpr UINT kOpenGuide = 505;
constexpr UINT kPopupFlags = TPM_CENTERALIGN | TPM_BOTTOMALIGN | TPM_NONOTIFY | TPM_RETURNCMD;
static_assert(kPopupFlags == 0x1A4);

// The row that the menu is about, and its stored channel.
struct MarkedRow {
    int nRow;
    bool bSelected;
    CEOID oid;
    PropRecord record;
};

MarkedRow ReadMarkedRow(CMainState& state) {
    MarkedRow marked = {};
    marked.nRow = static_cast<int>(SendMessageW(state.m_hListView, LVM_GETSELECTIONMARK, 0, 0));
    LVITEMW item = {};
    item.mask = LVIF_STATE | LVIF_PARAM;
    item.stateMask = ~0u;
    item.iItem = marked.nRow;
    SendMessageW(state.m_hListView, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    constexpr UINT kBoth = LVIS_FOCUSED | LVIS_SELECTED;
    marked.bSelected = (item.state & kBoth) == kBoth;
    marked.oid = static_cast<CEOID>(item.lParam);
    return marked;
}

void Append(HMENU menu, UINT id, UINT textId, bool enabled) {
    AppendMenuW(menu, MF_STRING | (enabled ? MF_ENABLED : MF_GRAYED), id, ResourceText(textId).sz);
}

UINT Choose(const CMainState& state, HWND window, MarkedRow& marked, int x, int y) {
    const OwnedMenu menu(CreatePopupMenu());
    Append(menu.get(), kAddChannel, IDS_MENU_ADD, true);
    Append(menu.get(), kDeleteChannel, IDS_MENU_DELETE, marked.bSelected);
    Append(menu.get(), kEditChannel, IDS_MENU_EDIT, marked.bSelected);
    AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
    if (marked.oid != 0) ListedChannelDB(state.m_hListView).CEDB_ReadRecord(marked.oid, &marked.record);
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    Append(menu.get(), kOpenGuide, IDS_MENU_GUIDE, marked.record.szPropRecord_ChannelPGuide[0] != L'\0');
    return static_cast<UINT>(TrackPopupMenuEx(menu.get(), kPopupFlags, x, y, window, nullptr));
}

void InsertOrSay(const CMainState& state, HWND window, const PropRecord& record) {
    if (ListedChannelDB(state.m_hListView).CEDB_InsertRecord(record) == 0)
        ShowText(window, IDS_INSERT_FAILED, L"Error", MB_OK);
}

void Add(CMainState& state, HWND window, MarkedRow&) {
    ChannelEdit edit = {};
    edit.dwMode = kAddChannel;
    const INT_PTR result = RunChannelDialog(window, edit);
    if (result == IDOK || result == IDC_CHANNEL_ADD_ACCEPT) InsertOrSay(state, window, edit.record);
}

void Delete(CMainState& state, HWND window, MarkedRow& marked) {
    if (ShowText(window, IDS_DELETE_CHANNEL_ASK, L"FM", MB_YESNO | MB_ICONQUESTION) != IDYES) return;
    if (!ListedChannelDB(state.m_hListView).CEDB_DeleteRecord(marked.oid)) return;
    SendMessageW(state.m_hListView, LVM_DELETEITEM, static_cast<WPARAM>(marked.nRow), 0);
}

void Edit(CMainState& state, HWND window, MarkedRow& marked) {
    ChannelEdit edit = {};
    edit.dwMode = kEditChannel;
    edit.record = marked.record;
    const INT_PTR result = RunChannelDialog(window, edit);
    if (result != IDOK && result != IDC_CHANNEL_EDIT_ACCEPT) return;
    if (ListedChannelDB(state.m_hListView).CEDB_UpdateRecord(marked.oid, edit.record) == 0) {
        ShowText(window, IDS_UPDATE_FAILED, L"Error", MB_OK);
    }
}

void OpenGuide(CMainState&, HWND, MarkedRow& marked) {
    SHELLEXECUTEINFOW info = {};
    info.cbSize = sizeof info;
    info.lpVerb = L"Open";
    info.lpFile = L"iexplore.exe";
    info.lpParameters = marked.record.szPropRecord_ChannelPGuide;
    info.nShow = SW_SHOW;
    ShellExecuteEx(&info);
}

struct PopupRow {
    UINT uId;
    void (*handler)(CMainState&, HWND, MarkedRow&);
};

constexpr PopupRow kPopup[] = {
    {kAddChannel, Add}, {kDeleteChannel, Delete}, {kEditChannel, Edit}, {kOpenGuide, OpenGuide}};

}  // namespace

void ShowChannelPopup(CMainState& state, HWND window, int x, int y) {
    MarkedRow marked = ReadMarkedRow(state);
    const UINT chosen = Choose(state, window, marked, x, y);
    for (const PopupRow& row : kPopup) {
        if (row.uId == chosen) row.handler(state, window, marked);
    }
}

void ShowSelectedChannel(CMainState& state, HWND window) {
    const POINT at = MarkedRowOnScreen(state.m_hListView);
    ShowChannelPopup(state, window, at.x, at.y);
}

void AddCurrentChannel(CMainState& state, HWND window) {
    // Kept: the dialog runs in the mode of an edit, so it shows the frequency that is to be added.
    ChannelEdit edit = {};
    edit.dwMode = kEditChannel;
    StringCchCopyW(edit.record.szPropRecord_ChannelName, kChannelTextCapacity, L"Unknown");
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    edit.record.dwPropRecord_ChannelValue = channel;
    const INT_PTR result = RunChannelDialog(window, edit);
    if (result == IDOK || result == IDC_CHANNEL_EDIT_ACCEPT) InsertOrSay(state, window, edit.record);
}
