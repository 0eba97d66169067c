// Which parts of the radio text are a title, an artist …: RT+ (IEC 62106, annex P). Portable.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "handset/fmdevice/sdr/rds/confirmed.h"
#include "handset/fmdevice/sdr/rds/group.h"
#include "handset/fmdevice/sdr/rds/station.h"

namespace sdr::rds {

// The application's identification in group 3A (3.1.5.4, annex P).
constexpr std::uint16_t kRadioTextPlusId = 0x4BD7;

struct PlusTag {
    std::uint8_t type = 0, start = 0, more = 0;  // `more`: letters after the first
    bool operator==(const PlusTag& o) const { return type == o.type && start == o.start && more == o.more; }
};

struct PlusMessage {
    bool toggle = false;
    bool running = false;
    std::array<PlusTag, 2> tags;
    bool operator==(const PlusMessage& o) const {
        return toggle == o.toggle && running == o.running && tags == o.tags;
    }
};

// The message of 37 bits: the 5 low bits of block 2 and blocks 3 and 4 (P.5.2).
[[nodiscard]] PlusMessage PlusMessageOf(std::uint16_t b, std::uint16_t c, std::uint16_t d);

class CRadioTextPlus {
  public:
    void Restart() { message_.Restart(); }
    // True when a new message is believed.
    bool Take(const Group& group);
    bool Running() const { return message_.Value() && message_.Value()->running; }
    // The parts of the text, given as codes; none that reaches beyond it.
    [[nodiscard]] std::vector<RadioTextTag> TagsOf(const std::string& codes) const;

  private:
    CConfirmedValue<PlusMessage> message_;
};

}  // namespace sdr::rds
