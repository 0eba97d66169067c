// Painting the shell's bar.
#pragma once

#include <windows.h>

#include "handset/coredll/windows/top_bar_state.h"

namespace coredll {

// Fills `area`, the whole bar. Its rows give the size of letters and signs.
void PaintTopBar(HDC dc, const RECT& area, const TopBarState& state);

}  // namespace coredll
