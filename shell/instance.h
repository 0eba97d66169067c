// One running radio: the second start shows the first, and a scheduled start takes its place.
#pragma once

#include <windows.h>

// Window class of the main window.
inline constexpr WCHAR kMainWindowClass[] = L"Kora";

// TRUE when a window was created; FALSE when another instance was brought to the front instead, or when the
// class or the window could not be made.
BOOL InitInstance(HINSTANCE hInstance, int nCmdShow);
