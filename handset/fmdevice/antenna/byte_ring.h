// What a source of samples has brought and nobody has taken yet; the oldest give way and are counted.
// Portable. The caller sees to it that one thread at a time is inside.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fm {

class CByteRing {
  public:
    // Only whole units of `unit` bytes, a sample's, are lost.
    CByteRing(std::size_t capacity, std::size_t unit);

    void Write(const std::uint8_t* bytes, std::size_t count);
    // Copies up to `most` of the oldest bytes and gives their number.
    std::size_t Read(std::uint8_t* bytes, std::size_t most);
    std::size_t Held() const { return static_cast<std::size_t>(end_ - begin_); }
    // How many bytes have been lost in front of the next that is read, since the last call.
    std::uint64_t TakeLost();

  private:
    std::vector<std::uint8_t> bytes_;
    std::size_t unit_;
    std::uint64_t begin_ = 0;  // counted since the first byte
    std::uint64_t end_ = 0;
    std::uint64_t lost_ = 0;
};

}  // namespace fm
