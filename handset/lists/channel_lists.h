// Channel lists between the radio's store and files. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lists {

struct Channel {
    std::u16string name;
    std::uint32_t frequency_10kHz = 0;
    std::u16string guide;
    std::size_t line = 0;  // of the file that it came from; 0: of none
};

struct ChannelList {
    std::u16string name;
    std::vector<Channel> channels;
    std::size_t line = 0;
    bool listed = true;  // false: a name that channels give and that the store's lists do not have
};

// One thing of a file that is not taken, and why. Texts of reports are UTF-8.
struct Refusal {
    std::size_t line = 0;
    std::string why;
};

// What a file holds.
struct ListFile {
    std::vector<ChannelList> lists;
    std::vector<Refusal> refused;
    // Not empty: the file is broken, what was read of it is not to be used, and this says where and why.
    std::string fault;
};

// A text as a report shows it: in quotes, on one line, not longer than one.
std::string Quoted(std::u16string_view text);
// "98.5 MHz", or "98.55 MHz".
std::string FrequencyText(std::uint32_t frequency_10kHz);
// The nearest frequency in steps of 10 kHz; one that 32 bits cannot hold, or that is none, becomes 0.
std::uint32_t FrequencyOfHertz(double hertz);

}  // namespace lists
