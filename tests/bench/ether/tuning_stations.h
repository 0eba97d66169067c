// The stations between which the bench tunes, each out of the others' windows and with a tone of its own.
#pragma once

#include <array>
#include <cstdint>

namespace bench {

struct TuningStation {
    std::uint32_t channel_10kHz;
    double tone_Hz;
};

inline constexpr std::array<TuningStation, 3> kTuningStations = {{{9850, 1000}, {10400, 500}, {9110, 1500}}};

}  // namespace bench
