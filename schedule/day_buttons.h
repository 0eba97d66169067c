// The schedule dialog's seven day buttons, Sunday first.
#pragma once

#include <windows.h>

inline constexpr int kDays = 7;

// The display name of a day (0 = Sunday), by which an entry keeps it.
struct DayName {
    explicit DayName(int day);
    WCHAR sz[16];
};

struct DayButtons {
    bool bSelected[kDays];

    // Only today.
    void SelectToday();
    bool AnySelected() const;
};

// Writes the names; WM_INITDIALOG and after a relayout.
void ShowDayNames(HWND dialog);
// WM_LBUTTONUP at a point of the dialog: toggles the day that is there, and traces all of them.
void OnDayTap(HWND dialog, DayButtons& days, POINT point);
// WM_CTLCOLORSTATIC: a selected day is white on black, another one black on white. Null for any other static.
HBRUSH DayBrush(const DayButtons& days, HWND control, HDC dc);
// WM_PAINT: the selected days are painted again.
void RepaintSelectedDays(HWND dialog, const DayButtons& days);
