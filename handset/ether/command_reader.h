// The commands of a client of a receiver stick's server, out of the bytes as they come. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ether {

// Five bytes: the number of the command, and its argument with the highest byte first.
struct Command {
    std::uint8_t id = 0;
    std::uint32_t argument = 0;
};

class CCommandReader {
  public:
    // Appends the commands that have become whole; the bytes may be cut anywhere.
    void Feed(const std::uint8_t* bytes, std::size_t count, std::vector<Command>* commands);

  private:
    std::array<std::uint8_t, 5> held_{};
    std::size_t count_ = 0;
};

}  // namespace ether
