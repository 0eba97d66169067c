#include "schedule/booking_delete.h"

#include <aygshell.h>
#include <commctrl.h>

#include <cwchar>

#include "resources/resource_ids.h"
#include "schedule/booking_list.h"
#include "shell/owned.h"
#include "shell/settings_key.h"
#include "shell/texts.h"

namespace {

constexpr UINT_PTR kDeleteSelected = 888;
constexpr UINT_PTR kDeleteAll = 889;

LRESULT List(HWND dialog, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendDlgItemMessageW(dialog, IDC_SCHEDULE_LIST, message, wParam, lParam);
}

int MarkedRow(HWND dialog) {
    return static_cast<int>(List(dialog, LVM_GETSELECTIONMARK));
}

bool IsMarkedRowSelected(HWND dialog) {
    constexpr UINT kChosen = LVIS_FOCUSED | LVIS_SELECTED;
    const int row = MarkedRow(dialog);
    return row >= 0 && List(dialog, LVM_GETITEMSTATE, static_cast<WPARAM>(row), kChosen) == kChosen;
}

bool IsConfirmed(HWND dialog, UINT textId) {
    return ShowText(dialog, textId, L"FM", MB_OKCANCEL | MB_ICONQUESTION) == IDOK;
}

bool IsSubkey(DWORD index, WCHAR (&name)[kEntryNameCapacity]) {
    DWORD length = ARRAYSIZE(name);
    return SUCCEEDED(EnumScheduleKey(HKEY_CLASSES_ROOT, kSettingsKey, index, name, &length));
}

bool AreSameBookings(const ScheduleEntry& one, const ScheduleEntry& other) {
    return _wcsicmp(one.szChannel, other.szChannel) == 0 && _wcsicmp(one.szWeek, other.szWeek) == 0 &&
           _wcsicmp(one.szStartTime, other.szStartTime) == 0 && _wcsicmp(one.szEndTime, other.szEndTime) == 0;
}

// Kept: an entry is found by its texts alone, so of two equal rows either one deletes the entry whose name
// comes first.
void DeleteFirstEntryLike(const ScheduleEntry& row) {
    WCHAR name[kEntryNameCapacity] = L"";
    const ScheduleKeys keys(HKEY_CLASSES_ROOT, kSettingsKey);
    for (DWORD index = 0; IsSubkey(index, name); ++index) {
        if (!AreSameBookings(keys.Read(name), row)) continue;
        DeleteScheduleKey(HKEY_CLASSES_ROOT, kSettingsKey, name);
        StopAppAtTimeEx(name);
        return;
    }
}

void DeleteSelectedBooking(HWND dialog) {
    if (!IsConfirmed(dialog, IDS_SCHEDULE_DELETE_ONE_ASK)) return;
    const int row = MarkedRow(dialog);
    DeleteFirstEntryLike(BookingAt(dialog, row));
    List(dialog, LVM_DELETEITEM, static_cast<WPARAM>(row));
}

void DeleteAllBookings(HWND dialog) {
    if (!IsConfirmed(dialog, IDS_SCHEDULE_DELETE_ALL_ASK)) return;
    List(dialog, LVM_DELETEALLITEMS);
    WCHAR name[kEntryNameCapacity] = L"";
    DWORD index = 0;
    while (IsSubkey(index, name)) {
        // What stays moves the walk on; behind what is deleted the next one has taken its place.
        const bool deleted =
            wcslen(name) >= kShortestEntryName && DeleteScheduleKey(HKEY_CLASSES_ROOT, kSettingsKey, name);
        if (!deleted) ++index;
        StopAppAtTimeEx(name);
    }
}

struct MenuRow {
    UINT_PTR uCommand;
    UINT uTextId;
    void (*handler)(HWND dialog);
};

// clang-format off
constexpr MenuRow kMenu[] = {
    {kDeleteSelected, IDS_MENU_DELETE,         DeleteSelectedBooking},
    {kDeleteAll,      IDS_SCHEDULE_DELETE_ALL, DeleteAllBookings},
};
// clang-format on

UINT_PTR AskCommand(HWND dialog, POINT point) {
    const OwnedMenu menu(CreatePopupMenu());
    const UINT look = MF_STRING | (IsMarkedRowSelected(dialog) ? MF_ENABLED : MF_GRAYED);
    for (const MenuRow& row : kMenu)
        AppendMenuW(menu.get(), look, row.uCommand, ResourceText(row.uTextId).sz);
    // NOLINTNEXTLINE(misc-redundant-expression): two flags that are none, named for the reader
    return static_cast<UINT_PTR>(TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_TOPALIGN | TPM_LEFTALIGN,
                                                  point.x, point.y, dialog, nullptr));
}

}  // namespace

void OnBookingContextMenu(HWND dialog, POINT point) {
    SetFocus(GetDlgItem(dialog, IDC_SCHEDULE_LIST));
    if (BookingCount(dialog) == 0) return;
    const UINT_PTR command = AskCommand(dialog, point);
    for (const MenuRow& row : kMenu) {
        if (row.uCommand == command) row.handler(dialog);
    }
}
