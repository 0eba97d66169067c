// The command line of a scheduled start: "-Rec", "-Channel" n, "-Duration" m, in any order.
#pragma once

#include <windows.h>

#include "schedule/command_options.h"

// Cuts the command line into tokens in place, at blanks, and fills the request; what is not named keeps its
// value. 0, or E_INVALIDARG for a null command line. A value that does not fit 32 bits becomes what wcstol
// makes of it.
HRESULT ParseCommandLine(WCHAR* commandLine, CommandLineRequest* request);
