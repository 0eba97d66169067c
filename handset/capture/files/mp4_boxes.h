// Boxes of an ISO 14496-12 file, made in memory: big-endian numbers in boxes in boxes. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace capture {

class CBoxBytes {
  public:
    void Number(std::uint64_t value, int bytes);
    void U8(std::uint32_t value) { Number(value, 1); }
    void U16(std::uint32_t value) { Number(value, 2); }
    void U32(std::uint32_t value) { Number(value, 4); }
    void U64(std::uint64_t value) { Number(value, 8); }
    void Zeros(std::size_t count) { bytes_.insert(bytes_.end(), count, 0); }
    // A type of four letters.
    void Type(const char* fourLetters);

    const std::vector<std::uint8_t>& Bytes() const { return bytes_; }
    std::size_t Size() const { return bytes_.size(); }

  private:
    friend class CBox;
    std::vector<std::uint8_t> bytes_;
};

// A box around all that is added during its life.
class CBox {
  public:
    CBox(CBoxBytes* bytes, const char* type);
    // A full box: one with a version and flags of 24 bits.
    CBox(CBoxBytes* bytes, const char* type, std::uint32_t version, std::uint32_t flags);
    ~CBox();
    CBox(const CBox&) = delete;
    CBox& operator=(const CBox&) = delete;

  private:
    CBoxBytes* const bytes_;
    const std::size_t begin_;
};

}  // namespace capture
