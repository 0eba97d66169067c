// Little-endian numbers in a run of bytes, and what is wrong with a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace pe {

using Bytes = std::vector<std::uint8_t>;

// Names the file and the place.
class BadFile : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Reads that stay inside; each throws BadFile with the name otherwise.
class Reader {
  public:
    Reader(const Bytes& bytes, std::string name) : bytes_(bytes), name_(std::move(name)) {}

    [[nodiscard]] std::uint16_t U16(std::size_t at) const {
        Need(at, 2);
        return static_cast<std::uint16_t>(bytes_[at] | bytes_[at + 1] << 8);
    }
    [[nodiscard]] std::uint32_t U32(std::size_t at) const {
        return U16(at) | static_cast<std::uint32_t>(U16(at + 2)) << 16;
    }
    [[nodiscard]] std::string Text(std::size_t at) const {
        std::string text;
        for (Need(at, 1); bytes_[at] != 0; Need(++at, 1)) text.push_back(static_cast<char>(bytes_[at]));
        return text;
    }
    [[nodiscard]] Bytes Part(std::size_t at, std::size_t size) const {
        Need(at, size);
        return {bytes_.begin() + static_cast<std::ptrdiff_t>(at),
                bytes_.begin() + static_cast<std::ptrdiff_t>(at + size)};
    }
    [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
    [[noreturn]] void Fail(const std::string& what) const { throw BadFile(name_ + ": " + what); }

  private:
    void Need(std::size_t at, std::size_t size) const {
        if (at > bytes_.size() || size > bytes_.size() - at)
            Fail("ends at byte " + std::to_string(bytes_.size()) + ", before what should be at " +
                 std::to_string(at));
    }

    const Bytes& bytes_;
    std::string name_;
};

inline void Put16(Bytes& bytes, std::size_t at, std::uint32_t value) {
    bytes.at(at) = static_cast<std::uint8_t>(value);
    bytes.at(at + 1) = static_cast<std::uint8_t>(value >> 8);
}
inline void Put32(Bytes& bytes, std::size_t at, std::uint32_t value) {
    Put16(bytes, at, value);
    Put16(bytes, at + 2, value >> 16);
}
inline void Add16(Bytes& bytes, std::uint32_t value) {
    bytes.resize(bytes.size() + 2);
    Put16(bytes, bytes.size() - 2, value);
}
inline void Add32(Bytes& bytes, std::uint32_t value) {
    bytes.resize(bytes.size() + 4);
    Put32(bytes, bytes.size() - 4, value);
}
inline std::uint32_t RoundUp(std::size_t value, std::uint32_t unit) {
    return static_cast<std::uint32_t>((value + unit - 1) / unit * unit);
}
inline void Pad(Bytes& bytes, std::uint32_t unit) {
    bytes.resize(RoundUp(bytes.size(), unit));
}

}  // namespace pe
