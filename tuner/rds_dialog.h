// The dialog that says which RDS services the tuned station sends.
#pragma once

#include <windows.h>

// Modal; gives 1 after OK.
INT_PTR ShowRDSInformation(HWND owner);
