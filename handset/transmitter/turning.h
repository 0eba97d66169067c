// A point that goes round a circle evenly: sines without asking for one at each sample. Portable.
#pragma once

#include <cmath>

namespace transmitter {

// Made anew for every block, so that what rounding adds never gathers.
class CTurning {
  public:
    CTurning(double phase_turns, double step_turns)
        : stepSine_(std::sin(kTurn * step_turns)),
          stepCosine_(std::cos(kTurn * step_turns)),
          sine_(std::sin(kTurn * phase_turns)),
          cosine_(std::cos(kTurn * phase_turns)) {}

    double Sine() const { return sine_; }
    double Cosine() const { return cosine_; }
    void Next() {
        const double sine = sine_ * stepCosine_ + cosine_ * stepSine_;
        cosine_ = cosine_ * stepCosine_ - sine_ * stepSine_;
        sine_ = sine;
    }

  private:
    static constexpr double kTurn = 2 * 3.14159265358979323846;
    double stepSine_;
    double stepCosine_;
    double sine_;
    double cosine_;
};

}  // namespace transmitter
