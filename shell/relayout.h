// Laying an open dialog out again as another of its templates has it, when the display turns.
#pragma once

#include <windows.h>

// Moves every control of `dialog` to its place in the template `templateId`, in one step, and refreshes it
// from there: texts of buttons and statics, icons and bitmaps that the template names by number, the
// selection of list and combo boxes scrolled into view. Controls are found by id; one that the dialog lacks
// is passed over. 0 when the template is not there. Thread of the dialog.
int RelayoutDialog(HINSTANCE module, HWND dialog, UINT templateId);
