// The radio behind an antenna on the simulated ether, in calculated time: the server's buffers as they are
// handed on, a stick that takes its time to go elsewhere, the receiver, and the ring of its sound. What it
// takes from an order to its sound follows from these alone, however busy the machine is.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "handset/ether/stream.h"
#include "handset/fmdevice/antenna/air_receiver.h"
#include "handset/fmdevice/antenna/clocked_sound.h"
#include "handset/fmdevice/antenna/gain_hold.h"
#include "handset/fmdevice/antenna/sample_clock.h"
#include "handset/fmdevice/sdr/clock_bridge.h"

namespace test {

class EtherRadio {
  public:
    EtherRadio(const std::string& band, std::size_t buffer_bytes);

    // Other stations go on the air; those that stay the same go on.
    void SetBand(const std::string& band);
    // Of what was received before nothing is heard any more.
    void Tune(std::uint32_t channel_10kHz);
    // So much time passes.
    void Run(double seconds);
    double Now_s() const { return now_s_; }
    fm::CAirReceiver& Receiver() { return receiver_; }
    fm::CBandMemory& Band() { return band_; }
    std::uint64_t Now_ms() const { return static_cast<std::uint64_t>(now_s_ * 1000.0); }

    // What was to be heard from that moment on, left and right in turn, up to what is in the ring.
    std::vector<float> HeardSince(double moment_s) const;
    std::uint64_t Gaps() const { return sound_.Gaps(); }
    // From now on it is held, as by a radio whose gain is automatic; before that it stands at 29.7 dB.
    void HoldGain();

  private:
    double Send(double centre_Hz);
    void Order(std::uint8_t id, std::uint32_t argument);
    void Give();
    void Receive();

    double now_s_ = 1000.0;
    ether::CAir air_;
    ether::CStream stream_;
    struct Waiting {
        double due_s;
        std::vector<std::uint8_t> bytes;
    };
    std::deque<Waiting> orders_;  // on the way into the tuner
    std::vector<std::uint8_t> come_;
    std::vector<std::uint8_t> block_;
    std::optional<fm::CGainHold> gain_;
    fm::CSampleClock clock_;
    fm::CBandMemory band_;
    fm::CAirReceiver receiver_;
    sdr::CClockBridge bridge_;
    fm::CClockedSound sound_;
    std::size_t greeting_;
};

}  // namespace test
