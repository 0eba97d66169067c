// The fonts of the host's own parts, such as its menus, for a display of twice the pixels.
#pragma once

#include <windows.h>

#include "handset/base/owned.h"

namespace coredll {

// `which`: such as &NONCLIENTMETRICSW::lfMenuFont.
[[nodiscard]] LOGFONTW HostFont(LOGFONTW NONCLIENTMETRICSW::*which);
// `scale` times as large; null when memory is short.
[[nodiscard]] handset::OwnedFont LargeFont(LOGFONTW font, int scale);

}  // namespace coredll
