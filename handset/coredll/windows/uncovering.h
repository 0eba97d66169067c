// Painting of what a window has covered.
#pragma once

namespace coredll {

// From now on, whenever a dialog, a box, a menu or any other window with no parent that this thread has made
// goes away, what it covered of the program's other windows is painted again, their children included: on the
// device a window has no memory of its own for what stands behind another one. The host keeps it, and paints
// nothing.
void WatchUncovering();

}  // namespace coredll
