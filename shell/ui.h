// The main window procedure: the single dispatcher of the program.
#pragma once

#include <windows.h>

// Runs on the main thread. Worker threads reach it only through the private messages of shell/messages.h.
LRESULT CALLBACK WndProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
