// The menu of a soft key: opened above its bar.
#pragma once

#include <windows.h>

namespace handset {

enum class BarSide { Left, Right };

// Opens `popup` above `bar`, flush with the side of its key, and returns when it is closed. `owner` gets
// WM_INITMENUPOPUP and the chosen WM_COMMAND (posted).
void TrackSoftKeyMenu(HMENU popup, HWND owner, HWND bar, BarSide side);

}  // namespace handset
