// Whether a tone goes on without a break: what was lost or put in shifts its phase at once, a click adds what
// is no tone; two clocks that disagree only bend its pitch a little. Portable.
#pragma once

#include <complex>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace bench {

// Where something was wrong, and how much: of a click what is beside the tone, by its amplitude; of a break
// the samples that are missing, or below 0 put in.
struct ToneFlaw {
    double at_s = 0;
    double size = 0;
};

struct ToneRecord {
    double seconds = 0;
    long clicks = 0;                           // windows of 20 ms with anything but the tone, or without it
    long breaks = 0;                           // places where half a sample and more was lost or put in
    std::vector<ToneFlaw> clicksAt, breaksAt;  // the first kMostFlaws of each
    // By how much the pitch is off, the mean of a second; no seconds: 0.
    double least_ppm = 0;
    double most_ppm = 0;
    double amplitude = 0;  // the mean of the windows, of full scale
};

inline constexpr std::size_t kMostFlaws = 20;

class CToneWatch {
  public:
    // The tone's period has to fit into 20 ms a whole number of times.
    CToneWatch(double rate_Hz, double tone_Hz);

    // One side's samples, as they come.
    void Add(const std::int16_t* samples, std::size_t count, std::size_t stride = 1);
    [[nodiscard]] const ToneRecord& Record() const { return record_; }

  private:
    void EndWindow();
    void Follow(double phase);

    double rate_Hz_;
    double step_;  // of the phase, a sample
    std::vector<double> window_;
    std::size_t filled_ = 0;
    std::uint64_t first_ = 0;  // number of the window's first sample
    std::deque<double> phases_;
    ToneRecord record_;
    bool any_ = false;
};

}  // namespace bench
