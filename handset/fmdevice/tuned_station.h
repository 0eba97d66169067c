// What the receiver of this process is tuned to, for other parts of the handset such as the recorder: nothing
// that the application has to tell them. Any thread; never waits long.
#pragma once

#include <cstdint>

extern "C" {

struct TunedStation {
    std::uint32_t channel_10kHz;
    // As the station names itself, in UTF-8; empty while that is not known. 8 characters of at most three
    // bytes.
    char name[8 * 3 + 1];
};

// False, and nothing in it, while there is no receiver or it is off.
bool HandsetTunedStation(TunedStation* station);

}  // extern "C"
