// A whole signal through the whole receiver.
#pragma once

#include <vector>

#include "handset/fmdevice/sdr/receiver.h"
#include "tests/native/sdr/fm_signal.h"

namespace sdr_test {

struct Received {
    std::vector<float> frames;  // left and right in turn
    sdr::ReceiverSnapshot snapshot;
};

inline Received Receive(const FmSignal& signal, sdr::ReceiverOptions options = {}) {
    options.rate_Hz = signal.rate_Hz;
    sdr::CSampleReceiver receiver(options);
    receiver.Tune(signal.offset_Hz);
    const std::vector<sdr::Sample> samples = MakeFm(signal);
    Received received;
    receiver.Process(samples.data(), samples.size(), &received.frames);
    received.snapshot = receiver.Snapshot();
    return received;
}

}  // namespace sdr_test
