// Lists of alternative frequencies by methods A and B (IEC 62106, 3.2.1.6). Portable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "handset/fmdevice/sdr/rds/station.h"

namespace sdr::rds {

// The frequency of a code of the VHF band in units of 10 kHz (3.2.1.6.1, table 10).
[[nodiscard]] std::optional<std::uint32_t> FrequencyOfCode(std::uint8_t code);
// The frequency of a code that follows the mark of the long and medium waves (table 12).
[[nodiscard]] std::optional<std::uint32_t> LongMediumOfCode_kHz(std::uint8_t code);

// Pairs that were received before: a pair counts when it is beyond doubt or comes a second time.
class CPairsSeen {
  public:
    void Restart() { count_ = next_ = 0; }
    [[nodiscard]] bool Note(std::uint16_t pair, bool certain);

  private:
    std::array<std::uint16_t, 64> pairs_{};
    std::size_t count_ = 0;
    std::size_t next_ = 0;
};

class CAlternativesReader {
  public:
    void Restart();
    // A pair of codes as it was received. True when the list has changed.
    bool Take(std::uint16_t codes, bool certain);
    const Alternatives& List() const { return list_; }

  private:
    // One list: a count with the first frequency, then pairs.
    struct Collection {
        std::uint8_t announced = 0;
        std::uint8_t first = 0;
        std::vector<std::uint16_t> pairs;
        [[nodiscard]] bool IsMethodB() const;
        [[nodiscard]] std::size_t Codes() const;
    };

    void Open(std::uint8_t count, std::uint8_t first);
    bool Publish();

    CPairsSeen seen_;
    // Of method B there is one for each frequency of the network; the oldest gives way.
    std::vector<Collection> collections_;
    std::size_t open_ = 0;
    Alternatives list_;
};

}  // namespace sdr::rds
