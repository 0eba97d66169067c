// Finds the RDS signal in the baseband: the timing of its bits, its phase, and how far it lies beside the
// reference. Portable.
//
// The square of what the matched filter gives is free of the data. At the right one of eight timings of a bit
// the squares add up in phase when they are turned back by twice the right frequency; noise, and the half-bit
// neighbour's mixture, do not. No loop has to pull in, so a weak signal is found in as little time as its
// noise allows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "handset/fmdevice/sdr/rds/baseband.h"
#include "handset/fmdevice/sdr/rds/matched_filter.h"

namespace sdr::rds {

struct FoundSignal {
    double symbol = 0.0;         // the symbol, counted by the reference's bits, to which the phase belongs
    double timing_bits = 0.0;    // the middle of symbol n is at n + timing
    double phase_rad = 0.0;      // up to half a turn, as differential coding allows
    double frequency_rad = 0.0;  // per symbol
    double symbols = 0.0;        // looked at
    double significance = 0.0;   // the power found over what noise alone would give
};

class CSignalSearch {
  public:
    void Restart();
    // Looks at what has come to the ring since the last time; the best that is significant, each time that
    // something is found.
    [[nodiscard]] std::optional<FoundSignal> Look(const CBaseband& baseband, const CMatchedFilter& filter);

  private:
    static constexpr std::size_t kTimings = 8;
    // 13 ms, in which the squares of a signal 14 Hz off turn by less than half a turn.
    static constexpr std::int64_t kPieceSymbols = 16;
    // Beyond 0.65 s a clock that is 200 ppm off would blur the timing.
    static constexpr std::size_t kMostPieces = 48;
    static constexpr std::size_t kFewestPieces = 6;

    struct Square {
        double re = 0.0, im = 0.0;
    };
    struct Piece {
        std::array<Square, kTimings> sums{};
        std::array<double, kTimings> power{};  // of the squares
    };
    struct Peak {
        double significance = 0.0;
        std::size_t timing = 0;
        int bin = 0;
    };

    void TakeSymbol(const CBaseband& baseband, const CMatchedFilter& filter);
    [[nodiscard]] std::optional<FoundSignal> Judge() const;
    [[nodiscard]] std::optional<FoundSignal> JudgeLast(std::size_t pieces) const;
    [[nodiscard]] Square SumOf(std::size_t pieces, std::size_t timing, double bin) const;
    [[nodiscard]] double PowerOf(std::size_t pieces, std::size_t timing) const;
    [[nodiscard]] double Significance(std::size_t pieces, std::size_t timing, double bin) const;
    [[nodiscard]] const Piece& Last(std::size_t back) const {
        return pieces_[(complete_ - 1 - back) % kMostPieces];
    }

    std::array<Piece, kMostPieces> pieces_{};
    std::size_t complete_ = 0;
    Piece open_;
    std::int64_t inOpen_ = 0;
    std::int64_t next_ = 0;  // symbol
    bool running_ = false;
};

}  // namespace sdr::rds
