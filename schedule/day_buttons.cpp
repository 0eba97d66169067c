#include "schedule/day_buttons.h"

#include <algorithm>
#include <iterator>

#include "resources/resource_ids.h"
#include "shell/app_block.h"

namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

HWND ButtonOf(HWND dialog, int day) {
    return GetDlgItem(dialog, IDC_SCHEDULE_SUNDAY + day);
}

bool IsDay(int day) {
    return day >= 0 && day < kDays;
}

bool IsIn(HWND dialog, HWND button, POINT point) {
    RECT place = {};
    GetWindowRect(button, &place);
    ClientToScreen(dialog, &point);
    return PtInRect(&place, point) != FALSE;
}

void Repaint(HWND button) {
    InvalidateRect(button, nullptr, TRUE);
    UpdateWindow(button);
}

}  // namespace

DayName::DayName(int day) : sz{} {
    LoadStringW(g_app.hInstance, static_cast<UINT>(IDS_SUNDAY + day), sz, ARRAYSIZE(sz));
}

void DayButtons::SelectToday() {
    std::fill(std::begin(bSelected), std::end(bSelected), false);
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    if (IsDay(now.wDayOfWeek)) bSelected[now.wDayOfWeek] = true;
}

bool DayButtons::AnySelected() const {
    return std::any_of(std::begin(bSelected), std::end(bSelected), [](bool selected) { return selected; });
}

void ShowDayNames(HWND dialog) {
    for (int day = 0; day < kDays; ++day) SetDlgItemTextW(dialog, IDC_SCHEDULE_SUNDAY + day, DayName(day).sz);
}

void OnDayTap(HWND dialog, DayButtons& days, POINT point) {
    for (int day = 0; day < kDays; ++day) {
        if (!IsIn(dialog, ButtonOf(dialog, day), point)) continue;
        bool* const on = days.bSelected;
        on[day] = !on[day];
        Repaint(ButtonOf(dialog, day));
        NKDbgPrintfW(L"Check Result Sun:%d ,Mon:%d, Tue:%d, Wed:%d, Thr:%d, Fri:%d, Sat:%d,\n", on[0], on[1],
                     on[2], on[3], on[4], on[5], on[6]);
        return;
    }
}

HBRUSH DayBrush(const DayButtons& days, HWND control, HDC dc) {
    const int day = GetDlgCtrlID(control) - IDC_SCHEDULE_SUNDAY;
    if (!IsDay(day)) return nullptr;
    const bool selected = days.bSelected[day];
    SetTextColor(dc, selected ? kWhite : kBlack);
    SetBkColor(dc, selected ? kBlack : kWhite);
    return static_cast<HBRUSH>(GetStockObject(selected ? BLACK_BRUSH : WHITE_BRUSH));
}

void RepaintSelectedDays(HWND dialog, const DayButtons& days) {
    for (int day = 0; day < kDays; ++day) {
        if (days.bSelected[day]) InvalidateRect(ButtonOf(dialog, day), nullptr, TRUE);
    }
}
