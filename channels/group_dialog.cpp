#include "channels/group_dialog.h"

#include <strsafe.h>
#include <new>

#include "channels/channel_db.h"
#include "channels/group_name_dialog.h"
#include "channels/list_senders.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/dialogs.h"
#include "shell/main_state.h"
#include "shell/relayout.h"
#include "shell/settings_key.h"
#include "shell/texts.h"

namespace {

constexpr UINT kSelectedCapacity = 100;

LRESULT List(HWND dialog, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendDlgItemMessageW(dialog, IDC_GROUP_LIST, message, wParam, lParam);
}

// The row that a command is about.
struct SelectedRow {
    int nIndex;
    WCHAR szName[kChannelTextCapacity] = L"";

    explicit SelectedRow(HWND dialog) : nIndex(static_cast<int>(List(dialog, LB_GETCURSEL))) {
        const auto row = static_cast<WPARAM>(nIndex);
        if (Exists() && List(dialog, LB_GETTEXTLEN, row) < static_cast<LRESULT>(kChannelTextCapacity)) {
            List(dialog, LB_GETTEXT, row, reinterpret_cast<LPARAM>(szName));
        }
    }
    bool Exists() const { return nIndex != LB_ERR; }
};

void Select(HWND dialog, int row) {
    List(dialog, LB_SETCURSEL, static_cast<WPARAM>(row));
}

void Append(HWND dialog, const WCHAR* name) {
    List(dialog, LB_INSERTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(name));
}

void Delete(HWND dialog, int row) {
    List(dialog, LB_DELETESTRING, static_cast<WPARAM>(row));
}

INT_PTR LayOut(HWND dialog) {
    FillDialog(g_app.hInstance, dialog, IDD_GROUPS);
    return FALSE;
}

INT_PTR OnInitDialog(HWND dialog, CChannelDB& database) {
    SetUpDialog(dialog, kFullScreenDialog);
    CreateDialogBar(dialog, IDM_GROUPS, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU);
    LayOut(dialog);
    database.SetListSender(g_app.pMainState->m_hListView, SendToChannelList);
    database.SetGroupSender(GetDlgItem(dialog, IDC_GROUP_LIST), SendToGroupList);

    WCHAR selected[kSelectedCapacity] = L"";
    ReadSelectedGroup(selected, kSelectedCapacity);
    database.CEDB_LoadGroups(kGroupDatabase);
    // Kept: a search by beginning, so a group whose name merely begins with the selected one can be chosen.
    const LRESULT row =
        List(dialog, LB_FINDSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(selected));
    if (row == LB_ERR) return FALSE;
    Select(dialog, static_cast<int>(row));
    return TRUE;
}

void OnAccept(HWND dialog, CChannelDB& database, WORD command) {
    const SelectedRow row(dialog);
    if (row.Exists()) {
        database.CEDB_ShowGroup(kChannelDatabase, row.szName);
        WriteSelectedGroup(row.szName);
    }
    EndDialog(dialog, command);
}

void OnCancel(HWND dialog, CChannelDB&, WORD command) {
    EndDialog(dialog, command);
}

void OnNew(HWND dialog, CChannelDB& database, WORD command) {
    GroupNameRequest request = {command, L""};
    StringCchPrintfW(request.szName, kGroupNameCapacity, L"Group %d",
                     static_cast<int>(List(dialog, LB_GETCOUNT)) + 1);
    if (!AskGroupName(dialog, request)) return;
    const CEOID oid = request.szName[0] == L'\0' ? 0 : database.CEDB_AddGroup(request.szName);
    if (oid == 0) {
        ShowText(dialog, IDS_GROUP_ADD_FAILED, L"Error", MB_OK);
        return;
    }
    Append(dialog, request.szName);
    // Kept: the identifier goes to the index one past the new row.
    const LRESULT count = List(dialog, LB_GETCOUNT);
    List(dialog, LB_SETITEMDATA, static_cast<WPARAM>(count), static_cast<LPARAM>(oid));
}

void OnRename(HWND dialog, CChannelDB& database, WORD command) {
    const SelectedRow row(dialog);
    GroupNameRequest request = {command, L""};
    StringCchPrintfW(request.szName, kGroupNameCapacity, L"%s", row.szName);
    if (!AskGroupName(dialog, request)) return;
    Select(dialog, row.nIndex);
    if (request.szName[0] == L'\0' || database.CEDB_RenameGroup(row.szName, request.szName) == 0) {
        ShowText(dialog, IDS_RENAME_FAILED, L"Error", MB_OK);
        return;
    }
    // Kept: the renamed group goes to the end, and its old place, now the following group's, is selected.
    Delete(dialog, row.nIndex);
    Append(dialog, request.szName);
    Select(dialog, row.nIndex);
}

void OnDelete(HWND dialog, CChannelDB& database, WORD) {
    const SelectedRow row(dialog);
    if (ShowTexts(dialog, IDS_QUESTION_TEXT, IDS_QUESTION_CAPTION, MB_OKCANCEL | MB_ICONQUESTION) != IDOK) {
        Select(dialog, row.nIndex);
        return;
    }
    database.CEDB_DeleteGroup(kRemoveGroup, row.szName);
    Delete(dialog, row.nIndex);
    Select(dialog, (row.nIndex > 1 ? row.nIndex : 1) - 1);
}

struct CommandRow {
    WORD wId;
    void (*handler)(HWND, CChannelDB&, WORD);
};

constexpr CommandRow kCommands[] = {
    {IDOK, OnAccept},       {IDC_GROUP_ACCEPT, OnAccept}, {IDC_GROUP_CANCEL, OnCancel},
    {IDC_GROUP_NEW, OnNew}, {IDC_GROUP_RENAME, OnRename}, {IDC_GROUP_DELETE, OnDelete},
};

INT_PTR OnCommand(HWND dialog, CChannelDB& database, WORD command) {
    const BOOL selected = List(dialog, LB_GETCURSEL) != LB_ERR;
    EnableWindow(GetDlgItem(dialog, IDC_GROUP_RENAME), selected);
    EnableWindow(GetDlgItem(dialog, IDC_GROUP_DELETE), selected);
    for (const CommandRow& row : kCommands) {
        if (row.wId != command) continue;
        row.handler(dialog, database, command);
        return TRUE;
    }
    return FALSE;
}

INT_PTR CALLBACK GroupProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongW(dialog, DWL_USER, lParam);
        return OnInitDialog(dialog, *reinterpret_cast<CChannelDB*>(lParam));
    }
    auto* database = reinterpret_cast<CChannelDB*>(GetWindowLongW(dialog, DWL_USER));
    if (database == nullptr) return FALSE;
    if (message == WM_SIZE) return LayOut(dialog);
    if (message == WM_COMMAND) return OnCommand(dialog, *database, LOWORD(wParam));
    if (message == WM_CLOSE) return EndDialog(dialog, 0);
    return FALSE;
}

}  // namespace

void ShowGroupDialog(CMainState&, HWND owner) {
    // A store of its own: while the dialog is open it fills the dialog's list beside the main window's.
    auto* database = new (std::nothrow) CChannelDB;
    RunDialog(owner, IDD_GROUPS, GroupProc, reinterpret_cast<LPARAM>(database));
    delete database;
}
