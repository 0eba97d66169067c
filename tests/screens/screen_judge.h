// What is wrong with a screen: texts that are cut, controls that cover one another or stick out.
#pragma once

#include <string>
#include <vector>

#include "tests/screens/screen_item.h"

namespace screens {

// The display as it lies on the desktop, and the rows of the shell's bar in it.
struct Display {
    RECT all{};
    LONG barRows = 0;
};

// One sentence for each fault. `drawn` are the items that say what was drawn, by now and before on the same
// screen, the last ones last; `now` is all else. `mayEndInDots` is a text of the user's own that is longer
// than any field; null: there is none.
std::vector<std::string> FaultsOf(const std::vector<Item>& now, const std::vector<Item>& drawn,
                                  const Display& display, const char* mayEndInDots);

}  // namespace screens
