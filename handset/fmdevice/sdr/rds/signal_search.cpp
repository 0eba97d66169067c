// Squares in pieces of 16 symbols, then a Fourier transform over the pieces for each timing.
#include "handset/fmdevice/sdr/rds/signal_search.h"

#include <algorithm>
#include <cmath>

namespace sdr::rds {
namespace {

constexpr double kPi = 3.14159265358979323846;
// Power over noise is distributed as exp(-x): with some 500 places looked at seventy times a second, noise
// alone passes once in ten minutes, and then the blocks tell.
constexpr double kSignificant = 16.0;
// A signal that the reference carries has no frequency of its own; another has to be that much likelier.
constexpr double kPrejudice = 3.0;

// Where the top of a parabola through three neighbours lies, from -0.5 to 0.5.
double TopOf(double before, double middle, double after) {
    const double bend = before - 2.0 * middle + after;
    return bend >= 0.0 ? 0.0 : std::clamp(0.5 * (before - after) / bend, -0.5, 0.5);
}

}  // namespace

void CSignalSearch::Restart() {
    complete_ = 0;
    open_ = Piece{};
    inOpen_ = 0;
    running_ = false;
}

void CSignalSearch::TakeSymbol(const CBaseband& baseband, const CMatchedFilter& filter) {
    for (std::size_t i = 0; i < kTimings; ++i) {
        const double time = static_cast<double>(next_) + static_cast<double>(i) / kTimings;
        const SymbolSample z = filter.At(baseband, time);
        const double re = static_cast<double>(z.re) * z.re - static_cast<double>(z.im) * z.im;
        const double im = 2.0 * static_cast<double>(z.re) * z.im;
        open_.sums[i].re += re;
        open_.sums[i].im += im;
        open_.power[i] += re * re + im * im;
    }
    ++next_;
    ++inOpen_;
}

std::optional<FoundSignal> CSignalSearch::Look(const CBaseband& baseband, const CMatchedFilter& filter) {
    if (baseband.Empty()) return std::nullopt;
    const double oldest = baseband.OldestClock() + CMatchedFilter::kReach_bits;
    if (!running_ || static_cast<double>(next_) < oldest) {
        Restart();
        next_ = static_cast<std::int64_t>(std::ceil(oldest));
        running_ = true;
    }
    std::optional<FoundSignal> found;
    while (static_cast<double>(next_) + 1.0 + CMatchedFilter::kReach_bits < baseband.NewestClock()) {
        TakeSymbol(baseband, filter);
        if (inOpen_ < kPieceSymbols) continue;
        pieces_[complete_ % kMostPieces] = open_;
        ++complete_;
        open_ = Piece{};
        inOpen_ = 0;
        const std::optional<FoundSignal> judged = Judge();
        if (judged) found = judged;
    }
    return found;
}

// The longer a stretch, the more a look costs, and the less it has to be taken again.
std::optional<FoundSignal> CSignalSearch::Judge() const {
    std::optional<FoundSignal> best;
    for (std::size_t pieces = kFewestPieces; pieces <= kMostPieces; pieces *= 2) {
        if (complete_ < pieces || complete_ % (pieces / kFewestPieces) != 0) continue;
        const std::optional<FoundSignal> found = JudgeLast(pieces);
        if (found && (!best || found->significance > best->significance)) best = found;
    }
    return best;
}

CSignalSearch::Square CSignalSearch::SumOf(std::size_t pieces, std::size_t timing, double bin) const {
    // The newest piece has the phase 0; the pieces before it are turned forward. By recurrence: one sine a
    // sum.
    const double angle = 2.0 * kPi * bin / (2.0 * static_cast<double>(pieces));
    const double stepRe = std::cos(angle);
    const double stepIm = std::sin(angle);
    double c = 1.0;
    double s = 0.0;
    Square sum;
    for (std::size_t back = 0; back < pieces; ++back) {
        const Square& square = Last(back).sums[timing];
        sum.re += square.re * c - square.im * s;
        sum.im += square.re * s + square.im * c;
        const double turned = c * stepRe - s * stepIm;
        s = c * stepIm + s * stepRe;
        c = turned;
    }
    return sum;
}

double CSignalSearch::PowerOf(std::size_t pieces, std::size_t timing) const {
    double power = 1e-30;
    for (std::size_t back = 0; back < pieces; ++back) power += Last(back).power[timing];
    return power;
}

double CSignalSearch::Significance(std::size_t pieces, std::size_t timing, double bin) const {
    const Square sum = SumOf(pieces, timing, bin);
    return (sum.re * sum.re + sum.im * sum.im) / PowerOf(pieces, timing);
}

std::optional<FoundSignal> CSignalSearch::JudgeLast(std::size_t pieces) const {
    Peak peak;
    Peak straight;
    // Up to 14 Hz either way.
    const int bins = static_cast<int>(pieces * 3 / 4);
    for (std::size_t timing = 0; timing < kTimings; ++timing) {
        for (int bin = -bins; bin <= bins; ++bin) {
            const double significance = Significance(pieces, timing, bin);
            if (significance > peak.significance) peak = {significance, timing, bin};
            if (bin == 0 && significance > straight.significance) straight = {significance, timing, bin};
        }
    }
    if (straight.significance > peak.significance - kPrejudice) peak = straight;
    if (peak.significance < kSignificant) return std::nullopt;

    const double bin = peak.bin + TopOf(Significance(pieces, peak.timing, peak.bin - 1), peak.significance,
                                        Significance(pieces, peak.timing, peak.bin + 1));
    const std::size_t before = (peak.timing + kTimings - 1) % kTimings;
    const std::size_t after = (peak.timing + 1) % kTimings;
    const double timing = static_cast<double>(peak.timing) + TopOf(Significance(pieces, before, bin),
                                                                   Significance(pieces, peak.timing, bin),
                                                                   Significance(pieces, after, bin));
    const Square sum = SumOf(pieces, peak.timing, bin);
    FoundSignal found;
    found.symbol = static_cast<double>(next_) - 0.5 - static_cast<double>(kPieceSymbols) / 2.0;
    found.timing_bits = timing / kTimings;
    found.phase_rad = 0.5 * std::atan2(sum.im, sum.re);
    found.frequency_rad =
        kPi * bin / (2.0 * static_cast<double>(pieces) * static_cast<double>(kPieceSymbols));
    found.symbols = static_cast<double>(pieces) * static_cast<double>(kPieceSymbols);
    found.significance = peak.significance;
    return found;
}

}  // namespace sdr::rds
