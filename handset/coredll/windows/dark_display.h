// A window that comes while the display is dark.
#pragma once

#include <windows.h>

namespace coredll {

// `window`, which nobody has seen yet, shows nothing until the display is lit; its thread dispatches messages
// meanwhile. The phone lays darkness over the windows that it finds, but a new one may stand above that for a
// moment, or for good where the host's window manager stacks windows without a word.
void HideWhileDark(HWND window);

}  // namespace coredll
