// What a station sends to be heard. Portable.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace transmitter {

// The rate of a multiplex inside the transmitter: the sidebands of its modulation that fold back lie beyond
// what any receiver lets in.
constexpr double kMultiplexRate_Hz = 768000.0;
constexpr double kPi = 3.14159265358979323846;

// 1 on both sides deviates the carrier by all that the station gives its programme.
struct Sound {
    double left = 0;
    double right = 0;
};

class IProgramme {
  public:
    virtual ~IProgramme() = default;
    // The next `count` sounds at kMultiplexRate_Hz, behind the pre-emphasis.
    virtual void Read(Sound* sounds, std::size_t count) = 0;
};

class CSilence final : public IProgramme {
  public:
    void Read(Sound* sounds, std::size_t count) override;
};

// Sines, each exact in frequency, amplitude and phase. The amplitudes are those before the pre-emphasis.
struct Tone {
    double frequency_Hz = 1000;
    double left = 1;
    double right = 1;
};

class CTones final : public IProgramme {
  public:
    CTones(const std::vector<Tone>& tones, double preEmphasis_s);
    void Read(Sound* sounds, std::size_t count) override;

  private:
    struct Running {
        double left;
        double right;
        double phase_turns;
        double step_turns;
    };
    std::vector<Running> tones_;
};

// What pre-emphasis does to a sine: how much louder, and how much earlier.
struct Emphasis {
    double gain;
    double lead_turns;
};
[[nodiscard]] Emphasis EmphasisAt(double frequency_Hz, double preEmphasis_s);

}  // namespace transmitter
