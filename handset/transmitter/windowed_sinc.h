// A low-pass as a function of time: a sinc under Kaiser's window, with its slope. Portable.
#pragma once

namespace transmitter {

class CWindowedSinc {
  public:
    // Flat up to `pass_Hz`, nothing left from `stop_Hz` on; both sides miss that by `attenuation_dB`.
    CWindowedSinc(double pass_Hz, double stop_Hz, double attenuation_dB);

    // The response to a unit impulse of area 1, around 0.
    double At(double time_s) const;
    double SlopeAt(double time_s) const;
    // It is 0 beyond this time on both sides.
    double Reach_s() const { return reach_s_; }

  private:
    double middle_Hz_;
    double beta_;
    double reach_s_;
};

}  // namespace transmitter
