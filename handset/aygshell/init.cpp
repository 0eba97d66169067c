// One-time initialisation of the shell library.
#include <windows.h>

extern "C" __attribute__((used)) BOOL WINAPI SHInitExtraControls() { return TRUE; }
