// The dialog in which recordings are booked by day of the week and time of day.
#pragma once

#include <windows.h>

class CMainState;

// Runs the dialog until it is closed; the id of the button that closed it. Thread of the owner.
INT_PTR RunScheduleDialog(HWND owner);
// The menu command.
void ShowScheduleDialog(CMainState& state, HWND owner);
