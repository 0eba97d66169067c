// How soft keys look: light letters on near-black, green under the stylus.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "handset/base/owned.h"

namespace handset {

// For a bar of that many rows.
OwnedFont SoftKeyFont(int rows);
// Fills the ground of a bar; `client` is its whole area.
void PaintBarGround(HDC dc, const RECT& client);
// Answers NM_CUSTOMDRAW of the bar's toolbar.
LRESULT PaintSoftKey(const NMTBCUSTOMDRAW& draw, HFONT font);

}  // namespace handset
