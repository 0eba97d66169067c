#include "schedule/schedule_dialog.h"

#include <commctrl.h>

#include "resources/resource_ids.h"
#include "schedule/booking_add.h"
#include "schedule/booking_delete.h"
#include "schedule/booking_list.h"
#include "schedule/channel_field.h"
#include "schedule/day_buttons.h"
#include "schedule/day_keys.h"
#include "shell/app_block.h"
#include "shell/dialogs.h"
#include "shell/marked_row.h"
#include "shell/relayout.h"
#include "skin/screen.h"

namespace {

constexpr WCHAR kTimeFormat[] = L"HH : mm";

DayButtons& DaysOf(HWND dialog) {
    return *reinterpret_cast<DayButtons*>(GetWindowLongW(dialog, DWL_USER));
}

POINT PointOf(LPARAM lParam) {
    return {static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam))};
}

INT_PTR OnInitDialog(HWND dialog, WPARAM, LPARAM parameter) {
    SetWindowLongW(dialog, DWL_USER, parameter);
    SetUpDialog(dialog, kFullScreenDialog);
    if (!CreateDialogBar(dialog, IDM_SCHEDULE, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU)) return TRUE;
    const auto format = reinterpret_cast<LPARAM>(kTimeFormat);
    SendDlgItemMessageW(dialog, IDC_SCHEDULE_START, DTM_SETFORMATW, 0, format);
    SendDlgItemMessageW(dialog, IDC_SCHEDULE_END, DTM_SETFORMATW, 0, format);
    SetUpChannelField(dialog);
    ShowDayNames(dialog);
    GiveDaysKeys(dialog);
    DaysOf(dialog).SelectToday();
    SetUpBookingList(dialog);
    FillBookingList(dialog);
    return TRUE;
}

INT_PTR OnLift(HWND dialog, WPARAM, LPARAM lParam) {
    OnDayTap(dialog, DaysOf(dialog), PointOf(lParam));
    return TRUE;
}

// Not handled: the dialog itself is painted as any other.
INT_PTR OnPaint(HWND dialog, WPARAM, LPARAM) {
    RepaintSelectedDays(dialog, DaysOf(dialog));
    return FALSE;
}

INT_PTR OnStaticColour(HWND dialog, WPARAM wParam, LPARAM lParam) {
    return reinterpret_cast<INT_PTR>(
        DayBrush(DaysOf(dialog), reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam)));
}

INT_PTR OnSize(HWND dialog, WPARAM, LPARAM) {
    RelayoutDialog(g_app.hInstance, dialog,
                   IsPortraitScreen() ? IDD_SCHEDULE_PORTRAIT : IDD_SCHEDULE_LANDSCAPE);
    SeatChannelArrows(dialog);
    ShowDayNames(dialog);
    FitBookingColumns(dialog);
    return TRUE;
}

INT_PTR OnArrows(HWND dialog, WPARAM, LPARAM lParam) {
    if (reinterpret_cast<HWND>(lParam) != GetDlgItem(dialog, IDC_SCHEDULE_CHANNEL_SPIN)) return FALSE;
    ShowChannelPosition(dialog);
    return TRUE;
}

INT_PTR OnContextMenu(HWND dialog, WPARAM, LPARAM lParam) {
    OnBookingContextMenu(dialog, PointOf(lParam));
    return TRUE;
}

INT_PTR OnClose(HWND dialog, WPARAM, LPARAM) {
    ReleaseChannelField(dialog);
    return EndDialog(dialog, kDialogClosed);
}

void Add(HWND dialog, WORD) {
    AddBookings(dialog, DaysOf(dialog));
}
void Close(HWND dialog, WORD command) {
    EndDialog(dialog, command);
}
void ShowSelected(HWND dialog, WORD) {
    OnBookingContextMenu(dialog, MarkedRowOnScreen(GetDlgItem(dialog, IDC_SCHEDULE_LIST)));
}
void FollowText(HWND dialog, WORD) {
    FollowChannelText(dialog);
}

struct CommandRow {
    WORD wId;
    WORD wNotice;
    void (*handler)(HWND, WORD);
};

constexpr CommandRow kCommands[] = {
    {IDC_SCHEDULE_ADD, BN_CLICKED, Add},
    {IDC_SCHEDULE_CLOSE, BN_CLICKED, Close},
    {IDOK, BN_CLICKED, Close},
    {IDC_SELECTED_BOOKING, BN_CLICKED, ShowSelected},
    {IDC_SCHEDULE_CHANNEL, EN_CHANGE, FollowText},
};

INT_PTR OnCommand(HWND dialog, WPARAM wParam, LPARAM) {
    for (const CommandRow& row : kCommands) {
        if (row.wId != LOWORD(wParam) || row.wNotice != HIWORD(wParam)) continue;
        row.handler(dialog, row.wId);
        return TRUE;
    }
    return FALSE;
}

struct MessageRow {
    UINT uMessage;
    INT_PTR (*handler)(HWND dialog, WPARAM wParam, LPARAM lParam);
};

// clang-format off
constexpr MessageRow kMessages[] = {
    {WM_LBUTTONUP,      OnLift},
    {WM_PAINT,          OnPaint},
    {WM_CTLCOLORSTATIC, OnStaticColour},
    {WM_SIZE,           OnSize},
    {WM_VSCROLL,        OnArrows},
    {WM_CONTEXTMENU,    OnContextMenu},
    {WM_COMMAND,        OnCommand},
    {WM_CLOSE,          OnClose},
};
// clang-format on

INT_PTR CALLBACK ScheduleProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) return OnInitDialog(dialog, wParam, lParam);
    if (GetWindowLongW(dialog, DWL_USER) == 0) return FALSE;
    for (const MessageRow& row : kMessages) {
        if (row.uMessage == message) return row.handler(dialog, wParam, lParam);
    }
    return FALSE;
}

}  // namespace

INT_PTR RunScheduleDialog(HWND owner) {
    RegisterControls(ICC_LISTVIEW_CLASSES | ICC_DATE_CLASSES);
    RegisterControls(ICC_UPDOWN_CLASS);
    DayButtons days = {};
    return RunDialog(owner, IDD_SCHEDULE_PORTRAIT, ScheduleProc, reinterpret_cast<LPARAM>(&days));
}

void ShowScheduleDialog(CMainState&, HWND owner) {
    RunScheduleDialog(owner);
}
