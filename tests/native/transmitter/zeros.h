// A group whose bits are all zero on the air.
#pragma once

#include <cstddef>

#include "handset/transmitter/group.h"

namespace test {

// All words 0 and checkwords turned to 0: a stream of zeros, which is one of equal symbols and a sine of the
// bit rate.
inline transmitter::Group Zeros() {
    transmitter::Group group;
    const transmitter::Offset offsets[] = {transmitter::Offset::kA, transmitter::Offset::kB,
                                           transmitter::Offset::kC, transmitter::Offset::kD};
    for (std::size_t i = 0; i < 4; ++i) group.flips[i] = transmitter::Block(0, offsets[i]);
    return group;
}

}  // namespace test
