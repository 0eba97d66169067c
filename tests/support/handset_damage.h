// What a handset has kept after all that was done to it: the channels, the bookings and the recordings,
// looked at with the eyes of programs that did not write them. No program of the handset may run meanwhile.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/handset_under_test.h"

namespace test {

struct Kept {
    int channels = 0, groups = 0, bookings = 0, recordings = 0;
    double recorded_s = 0;
    // What is damaged or missing, a line each.
    std::vector<std::string> damage;
};
Kept LookAtWhatIsKept(const HandsetUnderTest& handset);

// Of all recordings together. May be asked while they are written.
std::uintmax_t RecordedBytes(const HandsetUnderTest& handset);

}  // namespace test
