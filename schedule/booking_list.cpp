#include "schedule/booking_list.h"

#include <commctrl.h>

#include "resources/resource_ids.h"
#include "shell/settings_key.h"
#include "shell/texts.h"

namespace {

// The columns in their order, with their share of the width in percent.
struct ColumnRow {
    WCHAR (ScheduleEntry::*pText)[kBookingTextCapacity];
    int nWidth_percent;
};

// clang-format off
constexpr ColumnRow kColumns[] = {
    {&ScheduleEntry::szChannel,   25},
    {&ScheduleEntry::szWeek,      21},
    {&ScheduleEntry::szStartTime, 27},
    {&ScheduleEntry::szEndTime,   27},
};
// clang-format on
constexpr int kColumnCount = static_cast<int>(ARRAYSIZE(kColumns));

LRESULT List(HWND dialog, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendDlgItemMessageW(dialog, IDC_SCHEDULE_LIST, message, wParam, lParam);
}

}  // namespace

void SetUpBookingList(HWND dialog) {
    List(dialog, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    for (int column = 0; column < kColumnCount; ++column) {
        ResourceText head(static_cast<UINT>(IDS_SCHEDULE_COLUMN + column));
        LVCOLUMNW shape = {};
        shape.mask = LVCF_TEXT | LVCF_SUBITEM;
        shape.pszText = head.sz;
        shape.iSubItem = column;
        List(dialog, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&shape));
    }
    FitBookingColumns(dialog);
}

void FitBookingColumns(HWND dialog) {
    RECT client = {};
    GetClientRect(GetDlgItem(dialog, IDC_SCHEDULE_LIST), &client);
    // Room for the scroll bar that comes with many rows.
    const int width = client.right - GetSystemMetrics(SM_CXVSCROLL);
    for (int column = 0; column < kColumnCount; ++column) {
        List(dialog, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column),
             MAKELPARAM(width * kColumns[column].nWidth_percent / 100, 0));
    }
}

bool FillBookingList(HWND dialog) {
    WCHAR name[kEntryNameCapacity] = L"";
    DWORD length = ARRAYSIZE(name);
    const ScheduleKeys keys(HKEY_CLASSES_ROOT, kSettingsKey);
    for (DWORD index = 0; SUCCEEDED(keys.Enum(index, name, &length)); ++index) {
        length = ARRAYSIZE(name);
        const ScheduleEntry entry = keys.Read(name);
        if (entry.szChannel[0] == L'\0') continue;
        if (!InsertBooking(dialog, static_cast<int>(index), entry)) return false;
    }
    return true;
}

bool InsertBooking(HWND dialog, int position, const ScheduleEntry& entry) {
    ScheduleEntry shown = entry;
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = position;
    item.pszText = shown.szChannel;
    const auto row = static_cast<int>(List(dialog, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    if (row < 0) return false;
    // The list puts a row that is asked for behind its end at the end, so the others go to where it says.
    for (item.iSubItem = 1; item.iSubItem < kColumnCount; ++item.iSubItem) {
        item.pszText = shown.*kColumns[item.iSubItem].pText;
        List(dialog, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    }
    return true;
}

int BookingCount(HWND dialog) {
    return static_cast<int>(List(dialog, LVM_GETITEMCOUNT));
}

ScheduleEntry BookingAt(HWND dialog, int row) {
    ScheduleEntry entry = {};
    for (int column = 0; column < kColumnCount; ++column) {
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = entry.*kColumns[column].pText;
        item.cchTextMax = static_cast<int>(kBookingTextCapacity);
        List(dialog, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    }
    return entry;
}
