// The tuner's memory, in the state of the handset.
#include "handset/fmdevice/tuner_memory.h"

#include "handset/base/module_edge.h"
#include "handset/fmdevice/band/band.h"
#include "handset/fmdevice/receiver.h"
#include "handset/state/handset_state.h"
#include "handset/state/tuner_values.h"

namespace fm {
namespace {

constexpr std::uint32_t kHalfVolume = 50;

void Remember(const wchar_t* name, std::uint32_t value) noexcept try {
    handset::SetStateDword(name, value);
} catch (...) {
    handset::EdgeAnswer<void>();
}

}  // namespace

TunerMemory Remembered() {
    const std::uint32_t channel = handset::StateDword(handset::kTunedChannel, kBandBottom_10kHz);
    const std::uint32_t volume = handset::StateDword(handset::kTunerVolume, kHalfVolume);
    return {InBand(channel) ? channel : kBandBottom_10kHz, volume <= kFullVolume ? volume : kHalfVolume};
}

void RememberChannel(std::uint32_t channel) noexcept {
    Remember(handset::kTunedChannel, channel);
}

void RememberVolume(std::uint32_t percent) noexcept {
    Remember(handset::kTunerVolume, percent);
}

}  // namespace fm
