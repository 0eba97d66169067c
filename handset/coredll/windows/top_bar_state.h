// What the shell's bar shows of the phone.
#pragma once

#include <windows.h>

#include <string>

namespace coredll {

struct TopBarState {
    std::wstring title;  // of the window in front
    std::wstring clock;  // hours and minutes of the handset's local time
    int signal_bars;     // of the telephone network, 0 to kSignalBars
    bool headset;
    bool call;  // one that comes in, goes out or is talked on

    bool operator==(const TopBarState& other) const {
        return title == other.title && clock == other.clock && signal_bars == other.signal_bars &&
               headset == other.headset && call == other.call;
    }
};

inline constexpr int kSignalBars = 4;

// What is published of the phone at this moment; the title is left to the caller.
TopBarState CurrentTopBarState();

}  // namespace coredll
