// From the multiplex to groups: mixer, search, tracker and block synchronisation. Portable, no locks.
#pragma once

#include "handset/fmdevice/sdr/rds/baseband.h"
#include "handset/fmdevice/sdr/rds/block_sync.h"
#include "handset/fmdevice/sdr/rds/matched_filter.h"
#include "handset/fmdevice/sdr/rds/signal_search.h"
#include "handset/fmdevice/sdr/rds/symbol_tracker.h"

namespace sdr::rds {

struct SignalQuality {
    bool found = false;       // a signal is followed
    bool inStep = false;      // and its blocks are known
    double height_kHz = 0.0;  // the subcarrier's deviation
    double offset_Hz = 0.0;   // beside the pilot's third harmonic, or beside 57 kHz without a pilot
    double coherence = 0.0;   // 0 noise, 1 a signal without noise
};

class CReceiverChain {
  public:
    CReceiverChain(BlockHandler onBlock, GroupHandler onGroup);
    void Restart();
    void Feed(const MpxBlock& block);
    [[nodiscard]] SignalQuality Quality() const;

  private:
    [[nodiscard]] bool Content() const;
    void TakeUp(const FoundSignal& found);

    CBaseband baseband_;
    CSubcarrierMixer mixer_;
    CMatchedFilter filter_;
    CSignalSearch search_;
    CSymbolTracker tracker_;
    CBlockSync sync_;
    // Of the signal that is followed, as far as it still counts; whether its blocks were ever known.
    double significance_ = 0.0;
    bool wasInStep_ = false;
};

}  // namespace sdr::rds
