#include "handset/ether/command_reader.h"

namespace ether {

void CCommandReader::Feed(const std::uint8_t* bytes, std::size_t count, std::vector<Command>* commands) {
    for (std::size_t i = 0; i < count; ++i) {
        held_[count_++] = bytes[i];
        if (count_ < held_.size()) continue;
        count_ = 0;
        commands->push_back({held_[0], std::uint32_t{held_[1]} << 24 | std::uint32_t{held_[2]} << 16 |
                                           std::uint32_t{held_[3]} << 8 | held_[4]});
    }
}

}  // namespace ether
