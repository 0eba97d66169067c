// The air of a measurement, as the bytes of a converter leave it.
#pragma once

#include <complex>
#include <optional>
#include <vector>

#include "handset/transmitter/stream_format.h"
#include "handset/transmitter/transmitter.h"

namespace bench {

using Samples = std::vector<std::complex<float>>;

struct Air {
    transmitter::StreamSettings stream;
    std::vector<transmitter::StationSettings> stations;  // the first one is listened to
    // How finely the samples are told apart; none: floats as they are.
    std::optional<transmitter::StreamFormat> format = transmitter::StreamFormat::kCu8;
};

class CAirStream {
  public:
    explicit CAirStream(const Air& air);
    // The next `count` samples; what was given before is overwritten.
    const Samples& Next(std::size_t count);

  private:
    transmitter::CTransmitter transmitter_;
    std::optional<transmitter::StreamFormat> format_;
    Samples samples_;
    std::vector<std::uint8_t> bytes_;
};

}  // namespace bench
