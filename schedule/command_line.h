// The command line of a scheduled start: "-Rec", "-Channel" n, "-Duration" m, in any order.
#pragma once

#include <windows.h>

#include <cstdint>

struct CommandLineRequest {
    std::uint32_t uRecord;        // 0 or 1
    std::uint32_t uChannel;       // units of 10 kHz; 0 = none
    std::uint32_t uDuration_min;  // 0 = no recording
};

// Cuts the command line into tokens in place, at single blanks, and fills the request; what is not named
// keeps its value. 0, or E_INVALIDARG for a null command line.
HRESULT ParseCommandLine(WCHAR* commandLine, CommandLineRequest* request);
