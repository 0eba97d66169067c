// Date and time pickers show the handset's time when they come into being.
#pragma once

#include <windows.h>

namespace handset {

// Sets every picker among a dialog's controls to the handset's present time; the host's own control has taken
// the host's.
void SetPickersToHandsetTime(HWND dialog);

}  // namespace handset
