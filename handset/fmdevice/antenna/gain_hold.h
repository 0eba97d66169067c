// The gain of a stick, held so that its converter is neither overdriven nor half asleep: the strongest
// station in view decides, wherever the radio is tuned. Portable. One thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace fm {

class CGainHold {
  public:
    // Steps of gain that the tuner has; at first it stands at two thirds of them.
    explicit CGainHold(std::uint32_t steps);

    [[nodiscard]] std::uint32_t Step() const { return step_; }
    // Unsigned samples of 8 bits as they come, at this rate. True when the step has changed.
    [[nodiscard]] bool Add(const std::uint8_t* bytes, std::size_t count, double rate_Hz);

  private:
    void Count(const std::uint8_t* bytes, std::size_t count);
    [[nodiscard]] bool EndWindow();

    std::uint32_t steps_;
    std::uint32_t step_;
    std::uint64_t seen_ = 0;  // bytes in this window
    std::uint64_t clipped_ = 0;
    std::uint64_t loud_ = 0;
    std::size_t part_ = 0;  // bytes in the part of the window in hand
    std::size_t partClipped_ = 0;
    double worst_ = 0.0;    // share that was clipped of a part: all of it is of one place
    double rest_s_ = 0.0;   // until the next look: a change takes its time to come through
    double quiet_s_ = 0.0;  // for how long nothing was loud
    double patience_s_;     // before the gain is raised; longer after each clipping
};

}  // namespace fm
