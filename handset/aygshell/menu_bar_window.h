// The window of a soft-key menu bar: a child at the foot of its parent that holds a real toolbar. It is made,
// used and destroyed on its parent's thread, and owns its menu.
#pragma once

#include <windows.h>

#include "handset/aygshell/soft_keys.h"

namespace handset {

enum class BarKind {
    Shown,
    Hidden,       // the program shows it when it likes
    Placeholder,  // empty, and gone as soon as the parent gets a bar of its own
};

// NULL when the window cannot be made.
HWND CreateMenuBarWindow(HWND parent, SoftKeySet keys, BarKind kind);
// The bar of a window, or NULL.
HWND FindMenuBarWindow(HWND parent);

}  // namespace handset
