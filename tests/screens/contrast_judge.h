// Whether the texts of a screen can be read, measured on its picture.
#pragma once

#include <string>
#include <vector>

#include "tests/screens/picture.h"
#include "tests/screens/screen_item.h"

namespace screens {

// One sentence for each text that stands out from its ground by less than 4.5 to 1 (WCAG 2.1, 1.4.3). What
// cannot be used just now is greyed and left out, as it is there; and so is what another window covers.
// `picture` is of the display, whose corner on the screen is `corner`.
std::vector<std::string> HardToRead(const std::vector<Item>& now, const Picture& picture, POINT corner);

}  // namespace screens
