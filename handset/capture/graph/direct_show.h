// The host's DirectShow declarations. Its string helpers are left out: they would forbid the C runtime's own.
#pragma once

#include <windows.h>

#define NO_DSHOW_STRSAFE
#include <dshow.h>
