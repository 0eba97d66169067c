// The schedule dialog's channel: an edit with the frequency in megahertz, and arrows that count 10 kHz.
#pragma once

#include <windows.h>

// Joins the two and shows the tuned frequency.
void SetUpChannelField(HWND dialog);
// Once the dialog is laid out anew: the arrows stand inside their field again, at its right end.
void SeatChannelArrows(HWND dialog);
// Gives the edit its own procedure back.
void ReleaseChannelField(HWND dialog);

// WM_VSCROLL from the arrows: the edit shows where they stand.
void ShowChannelPosition(HWND dialog);
// EN_CHANGE from the edit: the arrows go on from a frequency that was typed.
void FollowChannelText(HWND dialog);
