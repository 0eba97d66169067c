// An edit control that takes nothing but a frequency.
#pragma once

#include <windows.h>

// Refuses every character that cannot belong to a frequency in megahertz, until the control gets its own
// procedure back. The control's user data is taken for it.
void SubclassFrequencyEdit(HWND edit);
void RestoreFrequencyEdit(HWND edit);
