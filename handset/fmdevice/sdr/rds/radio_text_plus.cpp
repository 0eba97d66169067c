#include "handset/fmdevice/sdr/rds/radio_text_plus.h"

#include "handset/fmdevice/sdr/rds/characters.h"

namespace sdr::rds {

PlusMessage PlusMessageOf(std::uint16_t b, std::uint16_t c, std::uint16_t d) {
    const std::uint64_t bits = std::uint64_t{b & 0x1Fu} << 32 | std::uint64_t{c} << 16 | d;
    const auto field = [bits](unsigned low, unsigned count) {
        return static_cast<std::uint8_t>(bits >> low & ((1u << count) - 1));
    };
    PlusMessage message;
    message.toggle = field(36, 1) != 0;
    message.running = field(35, 1) != 0;
    message.tags[0] = {field(29, 6), field(23, 6), field(17, 6)};
    message.tags[1] = {field(11, 6), field(5, 6), field(0, 5)};
    return message;
}

bool CRadioTextPlus::Take(const Group& group) {
    if (!group.blocks[2].Received() || !group.blocks[3].Received()) return false;
    const bool certain = group.blocks[1].Certain() && group.blocks[2].Certain() && group.blocks[3].Certain();
    return message_.Offer(
        PlusMessageOf(group.blocks[1].information, group.blocks[2].information, group.blocks[3].information),
        certain);
}

std::vector<RadioTextTag> CRadioTextPlus::TagsOf(const std::string& codes) const {
    std::vector<RadioTextTag> tags;
    if (!message_.Value()) return tags;
    for (const PlusTag& tag : message_.Value()->tags) {
        // Type 0 is a dummy (P.3). Some encoders count the first letter among those that follow it.
        if (tag.type == 0 || std::size_t{tag.start} + tag.more > codes.size()) continue;
        const std::string part = codes.substr(tag.start, std::size_t{tag.more} + 1);
        tags.push_back({tag.type, WithoutTrailingBlanks(LettersOf(part))});
    }
    return tags;
}

}  // namespace sdr::rds
