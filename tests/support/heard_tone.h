// The tone that is heard in decoded sound.
#pragma once

#include <cstdint>
#include <vector>

namespace test {

// The frequency that is loudest, and its share of the sound's power.
struct Tone {
    double frequency_Hz = 0;
    double share = 0;
};
// Where to look for it.
struct ToneRange {
    int from_Hz, to_Hz, step_Hz;
};
// Of the second around a place of the sound, 0 at its beginning to 1 at its end. Nothing of a sound that is
// shorter than a second.
Tone ToneAt(const std::vector<std::int16_t>& sound, int rate_Hz, double place, const ToneRange& range);

}  // namespace test
