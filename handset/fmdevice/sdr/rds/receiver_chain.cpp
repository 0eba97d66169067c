#include "handset/fmdevice/sdr/rds/receiver_chain.h"

#include <algorithm>
#include <utility>

namespace sdr::rds {
namespace {

// Equal symbols of the height 1 make a subcarrier whose crests are 1.11 high: its deviation.
constexpr double kDeviation_kHz = 75.0 * 1.1107;
// While blocks come through at all, nothing better is looked for.
constexpr float kEnoughBlocks = 0.25f;
constexpr double kDoubted = 0.9;

}  // namespace

CReceiverChain::CReceiverChain(BlockHandler onBlock, GroupHandler onGroup)
    : sync_(std::move(onBlock), std::move(onGroup)) {}

void CReceiverChain::Restart() {
    baseband_.Clear();
    mixer_.Restart();
    search_.Restart();
    tracker_ = CSymbolTracker();
    sync_.Restart();
    significance_ = 0.0;
    wasInStep_ = false;
}

bool CReceiverChain::Content() const {
    return tracker_.Running() && sync_.InStep() && sync_.ReceivedShare() > kEnoughBlocks;
}

// Another signal than the one that is followed has to be the clearer one, or to be found again and again.
// Before any block was known, the other was none, and what is in the ring is looked at once more.
void CReceiverChain::TakeUp(const FoundSignal& found) {
    if (tracker_.Follows(found)) {
        significance_ = std::max(significance_, found.significance);
        return;
    }
    if (tracker_.Running() && found.significance < significance_) {
        significance_ *= kDoubted;
        return;
    }
    significance_ = found.significance;
    if (!wasInStep_) {
        tracker_.Forget();
        sync_.Restart();
    }
    tracker_.Begin(found, baseband_, filter_);
}

void CReceiverChain::Feed(const MpxBlock& block) {
    const std::uint64_t before = baseband_.Count();
    mixer_.Take(block, baseband_);
    if (baseband_.Count() == before) return;
    if (Content()) {
        search_.Restart();
    } else if (const std::optional<FoundSignal> found = search_.Look(baseband_, filter_)) {
        TakeUp(*found);
    }
    float symbol = 0.0f;
    while (tracker_.Next(baseband_, filter_, &symbol)) sync_.Push(symbol);
    wasInStep_ = wasInStep_ || sync_.InStep();
}

SignalQuality CReceiverChain::Quality() const {
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
