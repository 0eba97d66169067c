// The device's <wchar.h>: wide formats follow the Microsoft rules (see stdio.h beside it).
#ifndef KORA_DEVICE_WCHAR_H
#define KORA_DEVICE_WCHAR_H

#undef __USE_MINGW_ANSI_STDIO
#define __USE_MINGW_ANSI_STDIO 0
#include_next <wchar.h>

#endif
