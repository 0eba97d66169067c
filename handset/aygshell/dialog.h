// Dialogs that SHInitDialog has taken charge of.
#pragma once

#include <windows.h>

namespace handset {

// The SHIDIF_… flags that the dialog was set up with; 0 for any other window.
DWORD ShellDialogFlags(HWND window);

}  // namespace handset
