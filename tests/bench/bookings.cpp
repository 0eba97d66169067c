// Filling the schedule's list from the stored bookings against the same rows put into a bare list view. A
// program of its own, because it is built as the application is. It prints one row a line, the columns parted
// by tabs.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>

#include "resources/resource_ids.h"
#include "schedule/booking_list.h"
#include "shell/settings_key.h"
#include "tests/bench/table.h"

namespace {

constexpr int kRounds = 5;
constexpr int kColumns = 4;

double Now_us() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1e6 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

ScheduleEntry EntryAt(int number) {
    ScheduleEntry entry = {};
    // As long as the names that the platform gives.
    std::swprintf(entry.szName, kEntryNameCapacity, L"Notification of bench %05d", number);
    std::swprintf(entry.szChannel, kBookingTextCapacity, L"%d.%d", 88 + number % 20, number % 10);
    std::swprintf(entry.szWeek, kBookingTextCapacity, L"Monday");
    std::swprintf(entry.szStartTime, kBookingTextCapacity, L"%02d : %02d", number / 60 % 24, number % 60);
    std::swprintf(entry.szEndTime, kBookingTextCapacity, L"%02d : %02d", number / 60 % 24, number % 60);
    return entry;
}

// A window with the dialog's list on it.
HWND CreateDialogWindow() {
    const HINSTANCE module = GetModuleHandleW(nullptr);
    const HWND dialog =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 240, 320, nullptr, nullptr, module, nullptr);
    const HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 230, 100, dialog,
                                      reinterpret_cast<HMENU>(IDC_SCHEDULE_LIST), module, nullptr);
    for (int column = 0; column < kColumns; ++column) {
        LVCOLUMNW info = {};
        info.mask = LVCF_WIDTH;
        info.cx = 50;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&info));
    }
    return dialog;
}

template <typename Fill>
double Median_us(HWND list, Fill fill) {
    std::vector<double> times;
    for (int round = 0; round < kRounds; ++round) {
        SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
        const double start = Now_us();
        fill();
        times.push_back(Now_us() - start);
    }
    return bench::Median(times);
}

}  // namespace

int main() {
    const HWND dialog = CreateDialogWindow();
    const HWND list = GetDlgItem(dialog, IDC_SCHEDULE_LIST);
    int stored = 0;
    for (const int bookings : {10, 100, 500}) {
        for (; stored < bookings; ++stored)
            WriteScheduleEntry(HKEY_CLASSES_ROOT, kSettingsKey, EntryAt(stored));
        const double ours = Median_us(list, [&] { FillBookingList(dialog); });
        const bool filled = SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == bookings;
        const double bare = Median_us(list, [&] {
            for (int row = 0; row < bookings; ++row) InsertBooking(dialog, row, EntryAt(row));
        });
        if (!filled) return 1;
        std::fprintf(stdout, "list the bookings, %d of them\t%f\tbare list view\t%f\t\n", bookings, ours,
                     bare);
    }
    for (int number = 0; number < stored; ++number) {
        DeleteScheduleKey(HKEY_CLASSES_ROOT, kSettingsKey, EntryAt(number).szName);
    }
    DestroyWindow(dialog);
    return 0;
}
