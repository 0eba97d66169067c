// The schedule dialog's list: one row a booked day.
#pragma once

#include <windows.h>

#include "schedule/schedule_entry.h"

// Full-row select, and the columns: channel, day, start, end.
void SetUpBookingList(HWND dialog);
// Shares the list's width out among the columns; after a relayout too.
void FitBookingColumns(HWND dialog);
// A row for every stored entry; false when the list refuses one, and then the rest is not shown.
bool FillBookingList(HWND dialog);

// Inserts a row at `position`; false when the list refuses.
bool InsertBooking(HWND dialog, int position, const ScheduleEntry& entry);
int BookingCount(HWND dialog);
// The four texts of a row; the name is empty.
ScheduleEntry BookingAt(HWND dialog, int row);
