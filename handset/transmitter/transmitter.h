// Stations on the air as samples of an aerial: what a receiver in software is tested with. Portable.
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "handset/transmitter/multiplex.h"
#include "handset/transmitter/noise.h"
#include "handset/transmitter/path.h"

namespace transmitter {

struct StationSettings {
    MultiplexSettings multiplex;
    double offset_Hz = 0;  // of its carrier from the middle of the stream
    double level_dB = 0;   // its carrier against StreamSettings::carrier
    PathSettings path;
};

struct StreamSettings {
    double rate_Hz = 240000;
    double ppm = 0;        // the sample clock is too fast by so much: everything in the stream seems too slow
    double carrier = 0.5;  // size of a carrier of 0 dB, full scale being 1
    // Of a carrier of 0 dB.
    double carrierToNoise_dBHz = std::numeric_limits<double>::infinity();
    std::complex<double> dc = 0;
    double gainError_dB = 0;    // by which the real part is louder than the imaginary
    double phaseError_deg = 0;  // by which the two are not square to each other
    std::uint64_t seed = 1;
};

class CTransmitter {
  public:
    CTransmitter(const StreamSettings& stream, const std::vector<StationSettings>& stations);
    ~CTransmitter();

    // The next `count` samples.
    void Read(std::complex<float>* samples, std::size_t count);

    // From the next sample on; a station that is too far from the middle to be heard stands still meanwhile.
    void Move(std::size_t station, double offset_Hz);
    void SetLevel(std::size_t station, double level_dB);

    // Groups that a station has begun to send.
    long long GroupsTaken(std::size_t station) const;

  private:
    class CStation;
    void AddFaults(std::complex<float>* samples, std::size_t count);

    StreamSettings stream_;
    std::vector<std::unique_ptr<CStation>> stations_;
    CNoise noise_;
};

}  // namespace transmitter
