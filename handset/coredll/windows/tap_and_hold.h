// The stylus held on a list opens its context menu, as lists of the device do; the host's know the right
// mouse button alone.
#pragma once

namespace coredll {

// From now on in the calling thread; later calls change nothing.
void WatchTapAndHold();

}  // namespace coredll
