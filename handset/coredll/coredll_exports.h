// How a function of COREDLL is defined so that coredll.def can export it by its plain name.
#pragma once

#include <windows.h>

#define COREDLL_EXPORT extern "C" __attribute__((used))
