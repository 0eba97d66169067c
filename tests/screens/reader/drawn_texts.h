// The texts that the program draws itself, and those of its common controls, as they come to the system's
// DrawText.
#pragma once

#include <vector>

#include "tests/screens/screen_item.h"

namespace screens {

void WatchDrawnTexts(HMODULE self);
// Those drawn since the last call.
std::vector<Item> TakeDrawnTexts();

}  // namespace screens
