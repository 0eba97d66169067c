// Laying an open dialog out again as another of its templates has it, when the display turns.
#pragma once

#include <windows.h>

// Moves every control of `dialog` to its place in the template `templateId`, in one step, and refreshes it
// from there: texts of buttons and statics, icons and bitmaps that the template names by number, the
// selection of list and combo boxes scrolled into view. Controls are found by id; one that the dialog lacks
// is passed over. 0 when the template is not there. Thread of the dialog.
int RelayoutDialog(HINSTANCE module, HWND dialog, UINT templateId);

// Lays the dialog out over all of its window, for dialogs that have one template for either way of the
// display: every control as much wider, and farther from the left, as the window is wider than the template.
// A list box or a list view takes the rows that are left above the menu bar, and what stands below it goes
// down. For WM_INITDIALOG, once the menu bar is there, and WM_SIZE. Nothing when the template is not there; a
// window smaller than the template is left alone. Thread of the dialog.
void FillDialog(HINSTANCE module, HWND dialog, UINT templateId);
