// A stereo multiplex with RDS and the noise of FM, made sample by sample for tests of the RDS decoder. It
// shares nothing with the decoder: checkwords, shaping and clocks are written out once more.
#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <vector>

#include "handset/fmdevice/sdr/mpx_block.h"

namespace synthetic {

// Four words of information; the version's bit of the second decides between C and C'.
using Words = std::array<std::uint16_t, 4>;

struct Signal {
    double pilot_kHz = 6.75;
    bool pilotKnown = true;  // the receiver's loop is locked
    double rds_kHz = 2.0;
    double phase_turns = 0.0;  // of the subcarrier beside the pilot's third harmonic
    double offset_Hz = 0.0;    // likewise; the bits keep to the subcarrier's 48th part
    double clock_ppm = 0.0;    // of everything sent, against the receiver's clock
    double bitDelay_bits = 0.3;
    double carrierToNoise_dBHz = 0;  // 0: no noise
    double tone_kHz = 0.0;           // of the difference signal, at 38 kHz +- 14 kHz
    double silentFrom_s = 0.0;       // no subcarrier from there to there
    double silentTo_s = 0.0;
    double slipAt_s = 1e9;  // from then on the bits come one bit later
    std::uint32_t seed = 1;
};

class Multiplex {
  public:
    explicit Multiplex(const Signal& signal);
    // Bits as they are before the differential coding.
    void Send(const Words& group);
    void SendBits(std::uint32_t bits, int count);
    std::size_t BitsSent() const { return symbols_.size(); }
    // The next millisecond; after the last bit nothing more is sent on the subcarrier.
    const sdr::MpxBlock& Next();
    bool Done() const;
    double Time_s() const { return static_cast<double>(sample_) / sdr::kMpxRate_Hz; }

  private:
    [[nodiscard]] double Data(double time_bits) const;

    Signal signal_;
    std::vector<signed char> symbols_;
    std::vector<float> samples_;
    sdr::MpxBlock block_;
    std::uint64_t sample_ = 0;
    std::mt19937 random_;
    double noise_ = 0.0;
    double lastNoise_ = 0.0;
    bool symbol_ = false;
    std::vector<float> shape_;
};

// The 26 bits of a block, by long division.
std::uint32_t EncodedBlock(std::uint16_t information, std::uint16_t offsetWord);

}  // namespace synthetic
