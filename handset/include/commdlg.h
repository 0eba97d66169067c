// The device's <commdlg.h>: its file dialog's record ends where that of the desktop's first version did, and its size,
// 76 bytes on the device, is looked at.
#ifndef KORA_DEVICE_COMMDLG_H
#define KORA_DEVICE_COMMDLG_H

#pragma push_macro("_WIN32_WINNT")
#undef _WIN32_WINNT
#define _WIN32_WINNT 0x0400
#include_next <commdlg.h>
#pragma pop_macro("_WIN32_WINNT")

#endif
