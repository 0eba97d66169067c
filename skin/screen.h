// What kind of screen the program runs on, asked anew each time: the user may turn the device.
#pragma once

// Higher than wide (a square screen counts as landscape). Any thread.
[[nodiscard]] bool IsPortraitScreen();

// More than 320 pixels across: the screens for which the larger images are drawn. Any thread.
[[nodiscard]] bool IsWideScreen();

// Both answers at one moment, for a paint or a hit test that needs them for many elements.
struct SkinScreen {
    int cx, cy;
    bool bPortrait, bWide;
};
[[nodiscard]] SkinScreen CurrentScreen();
