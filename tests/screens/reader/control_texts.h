// The texts of the system's own controls, menus and captions, measured in the fonts in which these write
// them.
#pragma once

#include <vector>

#include "tests/screens/screen_item.h"

namespace screens {

// What is in that visible window itself, not in those within it.
void AddTexts(HWND window, std::vector<Item>& items);
// `message`, answered within a bound.
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

}  // namespace screens
