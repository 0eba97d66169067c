// The fonts of the host's own parts, such as its menus, for a display of twice the pixels.
#pragma once

#include <windows.h>

#include "handset/base/owned.h"

namespace coredll {

// `which`: such as &NONCLIENTMETRICSW::lfMenuFont. `scale` times as large; null when memory is short.
[[nodiscard]] handset::OwnedFont LargeFont(LOGFONTW NONCLIENTMETRICSW::*which, int scale);

}  // namespace coredll
