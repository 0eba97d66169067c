#include "tests/bench/ether/tone_watch.h"

#include <algorithm>
#include <cmath>

namespace bench {
namespace {

constexpr double kTurn = 6.283185307179586;
constexpr double kWindow_s = 0.02;
constexpr std::size_t kSecond = 50;  // windows
// Of the tone's amplitude; noise stays far below it.
constexpr double kClick = 0.08;
// Of the mean amplitude before: less is silence in the tone.
constexpr double kHole = 0.5;
constexpr double kFullScale = 32768;
// Of a sample.
constexpr double kBreak = 0.5;

double Wrapped(double phase) {
    return phase - kTurn * std::round(phase / kTurn);
}

void Note(const ToneFlaw& flaw, std::vector<ToneFlaw>* flaws) {
    if (flaws->size() < kMostFlaws) flaws->push_back(flaw);
}

}  // namespace

CToneWatch::CToneWatch(double rate_Hz, double tone_Hz)
    : rate_Hz_(rate_Hz),
      step_(kTurn * tone_Hz / rate_Hz),
      window_(static_cast<std::size_t>(std::lround(kWindow_s * rate_Hz))) {}

void CToneWatch::Add(const std::int16_t* samples, std::size_t count, std::size_t stride) {
    for (std::size_t i = 0; i < count; ++i) {
        window_[filled_++] = samples[i * stride] / kFullScale;
        if (filled_ == window_.size()) EndWindow();
    }
}

void CToneWatch::EndWindow() {
    std::complex<double> sum;
    for (std::size_t i = 0; i < filled_; ++i)
        sum += window_[i] * std::polar(1.0, -step_ * static_cast<double>(first_ + i));
    const std::complex<double> tone = 2.0 / static_cast<double>(filled_) * sum;
    double beside = 0;
    std::size_t at = 0;
    for (std::size_t i = 0; i < filled_; ++i) {
        const double there = (tone * std::polar(1.0, step_ * static_cast<double>(first_ + i))).real();
        const double here = std::fabs(window_[i] - there);
        if (here <= beside) continue;
        beside = here;
        at = i;
    }
    const bool hole = any_ && std::abs(tone) < kHole * record_.amplitude;
    if (hole || beside > kClick * std::abs(tone)) {
        ++record_.clicks;
        Note({static_cast<double>(first_ + at) / rate_Hz_, beside / std::abs(tone)}, &record_.clicksAt);
    }
    any_ = true;
    first_ += filled_;
    const double windows = static_cast<double>(first_) / static_cast<double>(filled_);
    record_.amplitude += (std::abs(tone) - record_.amplitude) / windows;
    record_.seconds = static_cast<double>(first_) / rate_Hz_;
    filled_ = 0;
    Follow(std::arg(tone));
}

// A break shows in the phase of the window that holds it, and whole in the next one: two windows' progress is
// held against the mean of the second before, and one more when there was one, which then tells its size.
void CToneWatch::Follow(double phase) {
    if (!phases_.empty()) phase = phases_.back() + Wrapped(phase - phases_.back());
    phases_.push_back(phase);
    if (phases_.size() < kSecond + 3) return;
    const double before = (phases_[kSecond] - phases_[0]) / static_cast<double>(kSecond);
    if (phases_.size() > kSecond + 3) {
        const double whole = phases_[kSecond + 3] - phases_[kSecond] - 3 * before;
        if (record_.breaksAt.size() == static_cast<std::size_t>(record_.breaks))
            record_.breaksAt.back().size = whole / step_;
        // The same one is not counted again.
        phases_.clear();
        return;
    }
    const double jump = phases_[kSecond + 2] - phases_[kSecond] - 2 * before;
    if (std::fabs(jump) > kBreak * step_) {
        ++record_.breaks;
        const auto two = static_cast<double>(2 * window_.size());
        Note({(static_cast<double>(first_) - two) / rate_Hz_, jump / step_}, &record_.breaksAt);
        return;
    }
    const double ppm = before / (step_ * static_cast<double>(window_.size())) * 1e6;
    record_.least_ppm = std::min(record_.least_ppm, ppm);
    record_.most_ppm = std::max(record_.most_ppm, ppm);
    phases_.pop_front();
}

}  // namespace bench
