// The device's <stdio.h>: printf is the device's console, unbuffered, and formats follow the Microsoft rules.
// The desktop compiler's C++ headers ask for formatting of their own; that request is taken back here, where
// the functions are declared.
#ifndef KORA_DEVICE_STDIO_H
#define KORA_DEVICE_STDIO_H

#undef __USE_MINGW_ANSI_STDIO
#define __USE_MINGW_ANSI_STDIO 0
#include_next <stdio.h>

#endif
