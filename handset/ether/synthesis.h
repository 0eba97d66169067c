// Puts stations beside one another into one wide stream, by Fourier transforms. Portable.
//
// Each station's block is transformed as narrow as it was made, its lines are laid where it belongs in a wide
// spectrum, and one transform back makes the samples of all of them: a further station costs little.
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace ether {

class CSynthesis {
  public:
    // A whole number of kHz.
    explicit CSynthesis(std::uint32_t rate_Hz);
    ~CSynthesis();

    // Samples that a station gives to each block, and those that a block has.
    static constexpr std::size_t kStationBlock = 1152;
    [[nodiscard]] std::size_t BlockSamples() const { return wide_.size() / 4 * 3; }

    // Lines are so far apart; a station is placed on the nearest, and has to bring along what is left.
    static constexpr double kLine_Hz = 250;
    // Whether anything of a station there falls into the stream.
    [[nodiscard]] bool Reaches(long line) const;

    // The samples of a station that it gave to the blocks before, which the transform overlaps.
    struct Station {
        std::vector<std::complex<float>> samples;
        Station();
        // Where the next block is to be written.
        std::complex<float>* Next() { return &samples[samples.size() - kStationBlock]; }
    };

    void Begin();
    // One station's next block, of that size, into the block in hand.
    void Add(const Station& station, long line, float size);
    // The samples of the block; the stations' overlaps are to be moved on by Shift.
    void End(std::complex<float>* samples);
    static void Shift(Station* station);

  private:
    struct Plans;
    [[nodiscard]] float Edge(long line) const;

    std::unique_ptr<Plans> plans_;
    std::vector<std::complex<float>> narrow_;
    std::vector<std::complex<float>> wide_;
    std::vector<std::complex<float>> made_;
    std::uint64_t block_ = 0;
};

}  // namespace ether
