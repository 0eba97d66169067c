// The stick that the ether's server would have: what it can be told, and what it then does. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "handset/ether/command_reader.h"

namespace ether {

// The steps of gain of its tuner, as those of an R820T, in tenths of a decibel.
inline constexpr std::array<int, 29> kGains_tenthdB = {0,   9,   14,  27,  37,  77,  87,  125, 144, 157,
                                                       166, 197, 207, 229, 254, 280, 297, 328, 338, 364,
                                                       372, 386, 402, 421, 434, 439, 445, 480, 496};

// What is seen of the band, and how large.
struct Window {
    double centre_Hz = 100e6;         // as it really is
    std::uint32_t rate_Hz = 2048000;  // as the client counts
    std::optional<double> gain_dB;    // without one the tuner finds it by itself
    double clockError_ppm = 0;        // by which the samples come too fast
};

inline constexpr std::size_t kGreetingBytes = 12;

// What it cannot do it does not do, and stays as it was, as a stick does. Its samples come at whole
// kilohertz.
class CStick {
  public:
    // `crystal_ppm`: by which its crystal is too fast.
    explicit CStick(double crystal_ppm = 0) : crystal_ppm_(crystal_ppm) {}

    [[nodiscard]] static std::array<std::uint8_t, kGreetingBytes> Greeting();
    void Apply(const Command& command);
    [[nodiscard]] Window View() const;

  private:
    void SetFrequency(std::uint32_t frequency_Hz);
    void SetRate(std::uint32_t rate_Hz);
    void SetManualGain(std::uint32_t on);
    void SetGain(std::uint32_t gain_tenthdB);
    void SetGainIndex(std::uint32_t index);
    void SetCorrection(std::uint32_t ppm);

    double crystal_ppm_;
    std::uint32_t frequency_Hz_ = 100000000;
    std::uint32_t rate_Hz_ = 2048000;
    std::int32_t correction_ppm_ = 0;
    bool manualGain_ = false;
    std::size_t gain_ = 0;
};

}  // namespace ether
