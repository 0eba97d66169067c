#include "tuner/af_dialog.h"

#include <commctrl.h>

#include <iterator>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/dialogs.h"
#include "shell/relayout.h"
#include "tuner/audio.h"
#include "tuner/frequency.h"
#include "tuner/wait_cursor.h"

namespace {

constexpr int kIconSize = 16;  // pixels
constexpr int kIcons = 7;
constexpr int kColumnWidth = 50;
constexpr int kListTextCapacity = 26;
constexpr int kRowTextCapacity = 100;
// The highest level of each grade but the last.
constexpr std::int32_t kGradeEnds[] = {9, 20, 30, 40, 50, 64};
static_assert(std::size(kGradeEnds) + 1 == kIcons);

HWND ListOf(HWND dialog) {
    return GetDlgItem(dialog, IDC_AF_FREQUENCIES);
}

LRESULT ToList(HWND dialog, UINT message, WPARAM wParam, const void* data) {
    return SendMessageW(ListOf(dialog), message, wParam, reinterpret_cast<LPARAM>(data));
}

// Null when a picture could not be added.
HIMAGELIST CreateSignalIcons() {
    const HIMAGELIST icons = ImageList_Create(kIconSize, kIconSize, ILC_COLOR | ILC_MASK, kIcons, 0);
    for (int i = 0; i < kIcons; ++i) {
        const HICON icon = LoadIconW(g_app.hInstance, MAKEINTRESOURCEW(IDI_SIGNAL_BARS + i));
        if (ImageList_ReplaceIcon(icons, -1, icon) >= 0) continue;
        ImageList_Destroy(icons);
        return nullptr;
    }
    return icons;
}

void FillList(HWND dialog) {
    std::int32_t count = 0;
    if (g_app.pFMDevice->GetAFCount(&count) != 0) return;
    for (std::int32_t i = 0; i < count; ++i) {
        WCHAR text[kListTextCapacity] = L"";
        g_app.pFMDevice->GetAFItem(i, text);
        LVITEMW item = {};
        item.mask = LVIF_TEXT;
        item.iItem = i;
        item.pszText = text;
        ToList(dialog, LVM_INSERTITEMW, 0, &item);
    }
}

void SetUpList(HWND dialog, HIMAGELIST icons) {
    ToList(dialog, LVM_SETIMAGELIST, LVSIL_SMALL, icons);
    LVCOLUMNW column = {};
    column.mask = LVCF_WIDTH;
    column.cx = kColumnWidth;
    ToList(dialog, LVM_INSERTCOLUMNW, 0, &column);
    FillList(dialog);
    const LRESULT style = SendMessageW(ListOf(dialog), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
    SendMessageW(ListOf(dialog), LVM_SETEXTENDEDLISTVIEWSTYLE, 0, style | LVS_EX_ONECLICKACTIVATE);
}

// The rows stand side by side, as many as the width has room for.
INT_PTR LayOut(HWND dialog) {
    FillDialog(g_app.hInstance, dialog, IDD_AF_LIST);
    ToList(dialog, LVM_ARRANGE, LVA_DEFAULT, nullptr);
    return FALSE;
}

INT_PTR OnInitDialog(HWND dialog) {
    SetUpDialog(dialog, kFullScreenInputDialog);
    CreateDialogBar(dialog, 0, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU);
    LayOut(dialog);
    const HWND list = ListOf(dialog);
    const auto style = static_cast<DWORD>(GetWindowLongW(list, GWL_STYLE));
    SetWindowLongW(list, GWL_STYLE, static_cast<LONG>((style & ~LVS_TYPEMASK) | LVS_SMALLICON));
    const HIMAGELIST icons = CreateSignalIcons();
    if (icons == nullptr) return FALSE;
    SetUpList(dialog, icons);
    return TRUE;
}

std::uint32_t RowChannel(HWND dialog, int row, int capacity) {
    WCHAR text[kRowTextCapacity] = L"";
    LVITEMW item = {};
    item.pszText = text;
    item.cchTextMax = capacity;
    ToList(dialog, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), &item);
    return ChannelFromAFText(text);
}

void MeasureRow(HWND dialog, int row) {
    g_app.pFMDevice->SetChannel(RowChannel(dialog, row, kRowTextCapacity));
    std::int32_t signal = 0;
    g_app.pFMDevice->GetSignal(&signal);
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    item.iImage = AFSignalGrade(signal);
    ToList(dialog, LVM_SETITEMW, 0, &item);
}

void MeasureAll(HWND dialog) {
    const WaitCursor wait;
    std::uint32_t current = 0;
    g_app.pFMDevice->GetChannel(&current);
    const int rows = static_cast<int>(ToList(dialog, LVM_GETITEMCOUNT, 0, nullptr));
    for (int row = 0; row < rows; ++row) MeasureRow(dialog, row);
    g_app.pFMDevice->SetChannel(current);
}

INT_PTR OnCommand(HWND dialog, WORD id) {
    if (id == IDC_AF_MEASURE) {
        MuteOnOff(TRUE);
        MeasureAll(dialog);
        MuteOnOff(FALSE);
        return TRUE;
    }
    if (id == IDOK || id == IDC_AF_CLOSE) return EndDialog(dialog, id);
    return FALSE;
}

INT_PTR OnNotify(HWND dialog, const NMHDR& header) {
    if (header.code != static_cast<UINT>(LVN_ITEMACTIVATE)) return FALSE;
    const auto& activation = reinterpret_cast<const NMLISTVIEW&>(header);
    g_app.pFMDevice->SetChannel(RowChannel(dialog, activation.iItem, kAFTextCapacity));
    // Kept: after a choice the dialog stays open, without its pictures, so that another can be tried.
    SendMessageW(dialog, WM_DESTROY, 0, 0);
    return TRUE;
}

// The list lets go of the pictures first: it would use them, or free them again.
void ReleaseIcons(HWND dialog) {
    const auto icons = reinterpret_cast<HIMAGELIST>(ToList(dialog, LVM_SETIMAGELIST, LVSIL_SMALL, nullptr));
    if (icons != nullptr) ImageList_Destroy(icons);
}

INT_PTR CALLBACK AFListProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            return OnInitDialog(dialog);
        case WM_COMMAND:
            return OnCommand(dialog, LOWORD(wParam));
        case WM_SIZE:
            return LayOut(dialog);
        case WM_NOTIFY:
            return OnNotify(dialog, *reinterpret_cast<const NMHDR*>(lParam));
        case WM_DESTROY:
            ReleaseIcons(dialog);
            return FALSE;
        default:
            return FALSE;
    }
}

}  // namespace

int AFSignalGrade(std::int32_t level) {
    int grade = 0;
    for (const std::int32_t end : kGradeEnds) grade += level > end ? 1 : 0;
    return grade;
}

INT_PTR ShowAFList(HWND owner) {
    RegisterControls(ICC_LISTVIEW_CLASSES);
    return RunDialog(owner, IDD_AF_LIST, AFListProc);
}
