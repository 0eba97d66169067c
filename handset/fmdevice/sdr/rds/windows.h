// The window of Kaiser and Schafer for filters. Portable.
#pragma once

#include <cmath>

namespace sdr::rds {

// The modified Bessel function of order zero, by its series.
inline double BesselI0(double x) {
    double sum = 1.0;
    double term = 1.0;
    for (int i = 1; term > 1e-12 * sum; ++i) {
        term *= (x / (2.0 * i)) * (x / (2.0 * i));
        sum += term;
    }
    return sum;
}

// 1 in the middle, at 0, and nothing beyond the ends, -1 and 1.
inline double Kaiser(double x, double beta) {
    if (x <= -1.0 || x >= 1.0) return 0.0;
    return BesselI0(beta * std::sqrt(1.0 - x * x)) / BesselI0(beta);
}

}  // namespace sdr::rds
