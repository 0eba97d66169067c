// The receiver under measurement, with the groups, the texts and the sound that it gives.
#pragma once

#include <vector>

#include "handset/fmdevice/sdr/rds/decoder.h"
#include "handset/fmdevice/sdr/receiver.h"
#include "tests/bench/reception/air_stream.h"
#include "tests/bench/reception/scored_groups.h"

namespace bench {

class CListening {
  public:
    explicit CListening(const sdr::ReceiverOptions& options);
    CListening(const CListening&) = delete;
    CListening& operator=(const CListening&) = delete;

    void Tune(double offset_Hz) { receiver_.Tune(offset_Hz); }
    void Process(const Samples& samples) { receiver_.Process(samples.data(), samples.size(), &sound_); }

    const std::vector<GivenGroup>& Groups() const { return groups_; }
    const sdr::rds::Station& Station() { return rds_.Current(); }
    // Left and right in turn at 48 kHz, 1 being 75 kHz of deviation; grows until it is cleared.
    std::vector<float>& Sound() { return sound_; }

  private:
    void Take(const sdr::rds::Group& group);

    std::vector<GivenGroup> groups_;
    std::vector<float> sound_;
    sdr::rds::CDecoder rds_;
    sdr::CSampleReceiver receiver_;
};

}  // namespace bench
