// The options of a scheduled start's command line, read from a text. Portable.
#pragma once

#include <cstdint>

struct CommandLineRequest {
    std::uint32_t uRecord;        // 0 or 1
    std::uint32_t uChannel;       // units of 10 kHz; 0 = none
    std::uint32_t uDuration_min;  // 0 = no recording
};

// Called for each value once it is taken over: a format with one %s, and the token that it stands for.
using OptionTrace = void (*)(const wchar_t* format, ...);

// Cuts `line` into tokens in place, at blanks, and fills the request; what is not named keeps its value.
void ReadCommandOptions(wchar_t* line, CommandLineRequest& request, OptionTrace trace);
