// RDS of the tuned station, from the multiplex to what it says. Portable, no locks: one thread feeds it and
// looks.
//
//   Decoder decoder;
//   decoder.Feed(block);                  // each block of the multiplex, about a millisecond
//   decoder.Current().serviceName.whole   // what is known now
//
// Restart() when another station is tuned. As a receiver's listener it is fed and restarted by the receiver.
// The reference for everything: IEC 62106, whose clauses are cited by the numbers of the edition in one
// volume.
#pragma once

#include "handset/fmdevice/sdr/mpx_block.h"
#include "handset/fmdevice/sdr/rds/group_reader.h"
#include "handset/fmdevice/sdr/rds/receiver_chain.h"
#include "handset/fmdevice/sdr/rds/station.h"

namespace sdr::rds {

class CDecoder final : public IMpxListener {
  public:
    // The handler gets each group as it came, with the status of its blocks.
    explicit CDecoder(GroupHandler onGroup = {});
    CDecoder(const CDecoder&) = delete;
    CDecoder& operator=(const CDecoder&) = delete;

    // Another station: nothing is known.
    void Restart();
    void Feed(const MpxBlock& block);
    void OnTuned() override { Restart(); }
    void OnMultiplex(const MpxBlock& block) override { Feed(block); }
    [[nodiscard]] const Station& Current();

  private:
    double Now_s() const { return static_cast<double>(samples_) / kMpxRate_Hz; }

    GroupHandler onGroup_;
    CGroupReader reader_;
    CReceiverChain chain_;
    Station current_;
    std::uint64_t samples_ = 0;
};

}  // namespace sdr::rds
