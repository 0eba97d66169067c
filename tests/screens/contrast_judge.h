// Whether the texts of a screen can be read, measured on its picture.
#pragma once

#include <string>
#include <vector>

#include "tests/screens/picture.h"
#include "tests/screens/screen_item.h"

namespace screens {

// One sentence for each text that stands out from its ground by less than 4.5 to 1 (WCAG 2.1, 1.4.3). What
// cannot be used just now is greyed and left out, as it is there; and so is what another window covers. Of
// `drawn`, those are looked at that are a field of the main screen's, unless a box is open. `picture` is of
// the display, whose corner on the screen is `corner`.
std::vector<std::string> HardToRead(const std::vector<Item>& now, const std::vector<Item>& drawn,
                                    const Picture& picture, POINT corner);

}  // namespace screens
