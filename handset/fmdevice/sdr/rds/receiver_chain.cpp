#include "handset/fmdevice/sdr/rds/receiver_chain.h"

#include <utility>

namespace sdr::rds {
namespace {

// The mean square of a signal of random bits is 0.617 of the square of a symbol's height (1.7), and 0.485 of
// the square of what is called its deviation.
constexpr double kDeviation_kHz = 75.0 * 1.128;
// While blocks come through at all, nothing better is looked for.
constexpr float kEnoughBlocks = 0.25f;

}  // namespace

ReceiverChain::ReceiverChain(BlockHandler onBlock, GroupHandler onGroup)
    : sync_(std::move(onBlock), std::move(onGroup)) {}

void ReceiverChain::Restart() {
    baseband_.Clear();
    mixer_.Restart();
    search_.Restart();
    tracker_ = SymbolTracker();
    sync_.Restart();
}

bool ReceiverChain::Content() const {
    return tracker_.Running() && sync_.InStep() && sync_.ReceivedShare() > kEnoughBlocks;
}

void ReceiverChain::Feed(const MpxBlock& block) {
    const std::uint64_t before = baseband_.Count();
    mixer_.Take(block, baseband_);
    if (baseband_.Count() == before) return;
    if (Content()) {
        search_.Restart();
    } else if (const std::optional<FoundSignal> found = search_.Look(baseband_, filter_)) {
        if (!tracker_.Follows(*found)) tracker_.Begin(*found, baseband_, filter_);
    }
    float symbol = 0.0f;
    while (tracker_.Next(baseband_, filter_, &symbol)) sync_.Push(symbol);
}

SignalQuality ReceiverChain::Quality() const {
    SignalQuality quality;
    quality.found = tracker_.Running();
    if (!quality.found) return quality;
    quality.inStep = sync_.InStep();
    quality.height_kHz = tracker_.Height() * kDeviation_kHz;
    quality.offset_Hz = tracker_.Frequency_Hz();
    quality.coherence = tracker_.Coherence();
    return quality;
}

}  // namespace sdr::rds
