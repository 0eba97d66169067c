// The notice after the radio moved to an alternative frequency by itself.
#pragma once

#include <windows.h>

void ShowAFNotice(HWND window);
