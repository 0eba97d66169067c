// How a function of COREDLL is defined so that coredll.def can export it. A call that the desktop's headers
// declare too is named Device… here, and coredll.def gives it its plain name.
#pragma once

#include <windows.h>

#define COREDLL_EXPORT extern "C" __attribute__((used))
