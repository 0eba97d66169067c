// A sine made by turning a point on a circle: a few multiplications a sample. Portable.
#pragma once

#include <cmath>

namespace fm {

class COscillator {
  public:
    // `step_rad`: the angle from one sample to the next. Begins at angle 0.
    explicit COscillator(double step_rad = 0)
        : stepSine_(std::sin(step_rad)), stepCosine_(std::cos(step_rad)) {}

    // Of the sample in hand.
    double Sine() const { return sine_; }
    double Cosine() const { return cosine_; }
    // What rounding adds in an hour at 44.1 kHz is below 1e-7.
    void Next() {
        const double sine = sine_ * stepCosine_ + cosine_ * stepSine_;
        cosine_ = cosine_ * stepCosine_ - sine_ * stepSine_;
        sine_ = sine;
    }

  private:
    double stepSine_;
    double stepCosine_;
    double sine_ = 0;
    double cosine_ = 1;
};

}  // namespace fm
