// From the clock of the antenna's samples to that of the host's sound card. Portable.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace sdr {

// Two crystals never agree: what the receiver calls 48000 frames is some more or less of the host's second.
// Between both stands a ring, whose fill tells which one is ahead. This resamples to the host's rate on the
// way into the ring, by a ratio that follows the fill, up to kMostCorrection_ppm, so slowly that nobody hears
// it, and undisturbed by the jerks in which a stick's samples come. One thread at a time.
class CClockBridge {
  public:
    static constexpr double kMostCorrection_ppm = 300.0;

    // hostRate_Hz: 8000 to 192000. targetFill_s: what the ring is to hold on the mean; whoever reads it
    // begins when so much is there.
    CClockBridge(double hostRate_Hz, double targetFill_s);
    ~CClockBridge();
    CClockBridge(const CClockBridge&) = delete;
    CClockBridge& operator=(const CClockBridge&) = delete;

    // `frames` of left and right at kSoundRate_Hz; appends the same at the host's rate. `fill_s`: what the
    // ring holds before these go into it.
    void Process(const float* frames, std::size_t count, double fill_s, std::vector<float>* output);
    // How much faster the samples' clock is than the host's, as far as is known.
    [[nodiscard]] double Correction_ppm() const { return correction_ * 1e6; }
    // After a gap, or another source: the sound begins anew. The clocks' difference is kept.
    void Restart();
    // What went in and has not come out yet comes out as silence of the same length.
    void Silence() { silent_ = kHeld; }

  private:
    struct Resampler;
    void Follow(double seconds, double fill_s);

    // More than the resampler holds back, in frames.
    static constexpr std::size_t kHeld = 960;

    double ratio_;
    double targetFill_s_;
    double meanError_s_ = 0.0;
    double mean_s_ = 0.0;  // over how much of the past it stands
    double drift_ = 0.0;
    double correction_ = 0.0;
    std::size_t silent_ = 0;  // frames to come that are
    std::unique_ptr<Resampler> resampler_;
};

}  // namespace sdr
