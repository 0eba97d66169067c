// From what a station plays to what the receiver gives out: noise by level, stereo or mono. Portable.
#pragma once

#include <cstddef>

#include "handset/fmdevice/band/generators.h"

namespace fm {

// How much of the programme comes through, and the loudest sample of the hiss over it. From level 0 to 100
// the first never falls and the second never rises.
[[nodiscard]] float ProgrammeGain(int level);
[[nodiscard]] float HissAmplitude(int level);

// `frames` holds the programme and receives what is heard: mixed down to mono unless `stereo`, and with the
// hiss of the level, which is another one on each side in stereo.
void AddReception(int level, bool stereo, CNoise* noise, float* frames, std::size_t count);

}  // namespace fm
