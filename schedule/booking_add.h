// Booking what the schedule dialog's fields say.
#pragma once

#include <windows.h>

struct DayButtons;

// Checks the fields and books each selected day: a row in the list, a notification of the platform and an
// entry. What is in the way is told to the user, and days that were booked before that stay booked.
void AddBookings(HWND dialog, const DayButtons& days);
