// What happens to a carrier between mast and aerial. Portable.
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace transmitter {

struct PathSettings {
    double doppler_Hz = 0;   // Rayleigh fading by this speed (Jakes' spectrum), of mean power 1; 0: none
    double echo = 0;         // a second path of this size; 0: none
    double echoDelay_s = 0;  // rounded to a sample of the multiplex rate, 1.3 us or 390 m of way
    double echoPhase_turns = 0;
    double echoDoppler_Hz = 0;  // how fast that phase turns
    std::uint64_t seed = 1;
};

class CPath {
  public:
    explicit CPath(const PathSettings& settings);

    // In place, at kMultiplexRate_Hz.
    void Pass(std::complex<float>* carrier, std::size_t count);

  private:
    void Echo(std::complex<float>* carrier, std::size_t count);
    void Fade(std::complex<float>* carrier, std::size_t count);

    // A wave from one direction.
    struct Wave {
        double phase_turns;
        double step_turns;
    };
    PathSettings settings_;
    std::vector<Wave> waves_;
    std::vector<std::complex<float>> behind_;  // the last samples, as long as the echo takes
};

}  // namespace transmitter
