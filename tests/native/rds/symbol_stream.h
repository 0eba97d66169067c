// A baseband of random symbols, as the mixer gives it, with noise on it if wanted.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "handset/fmdevice/sdr/rds/baseband.h"
#include "handset/fmdevice/sdr/rds/matched_filter.h"

struct SymbolStream {
    double delay_bits = 0.0;
    double phase_rad = 0.0;
    double offset_Hz = 0.0;
    double height = 1.0;
    double noise = 0.0;  // standard deviation of either part of a sample
    std::vector<int> symbols;

    void Append(sdr::rds::CBaseband& baseband, double bits) {
        constexpr double kStep_bits = 1187.5 / sdr::rds::kBasebandRate_Hz;
        constexpr double kReach_bits = 12.0;
        constexpr double kTwoPi = 6.283185307179586;
        for (const double end = time_bits_ + bits; time_bits_ < end; time_bits_ = kStep_bits * ++samples_) {
            const double at = time_bits_ - delay_bits;
            const auto last = static_cast<std::int64_t>(std::floor(at + kReach_bits));
            while (static_cast<std::int64_t>(symbols.size()) <= last)
                symbols.push_back((random_() & 1u) != 0 ? 1 : -1);
            double value = 0.0;
            for (auto n = static_cast<std::int64_t>(std::ceil(at - kReach_bits)); n <= last; ++n) {
                if (n < 0) continue;
                value += symbols[static_cast<std::size_t>(n)] *
                         sdr::rds::BiphaseSymbol(at - static_cast<double>(n));
            }
            const double phase = phase_rad + kTwoPi * offset_Hz * time_bits_ / 1187.5;
            baseband.Append(static_cast<float>(height * value * std::cos(phase) + noise * normal_(random_)),
                            static_cast<float>(height * value * std::sin(phase) + noise * normal_(random_)),
                            time_bits_);
        }
    }

  private:
    double time_bits_ = 0.0;
    double samples_ = 0.0;
    std::mt19937 random_{11};
    std::normal_distribution<double> normal_;
};
