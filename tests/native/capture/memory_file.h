// A recording's file in memory: it can be full, and it remembers every state that it was in, as a process
// that is killed would leave them.
#pragma once

#include <algorithm>
#include <cstring>
#include <vector>

#include "handset/capture/files/recording_file.h"

namespace test {

class CMemoryFile final : public capture::IRecordingFile {
  public:
    explicit CMemoryFile(std::size_t capacity = SIZE_MAX) : capacity_(capacity) {}

    // A full disk takes the first part of what it is given.
    bool WriteAt(std::uint64_t offset, const void* data, std::size_t size) override {
        const auto begin = static_cast<std::size_t>(offset);
        const std::size_t end = std::min(begin + size, std::max(capacity_, begin));
        if (bytes.size() < end) bytes.resize(end);
        if (end > begin) std::memcpy(bytes.data() + begin, data, end - begin);
        if (remember) states.push_back(bytes);
        return end == begin + size;
    }
    void Truncate(std::uint64_t size) override {
        if (size < bytes.size()) bytes.resize(static_cast<std::size_t>(size));
        if (remember) states.push_back(bytes);
    }

    std::vector<std::uint8_t> bytes;
    bool remember = false;
    std::vector<std::vector<std::uint8_t>> states;

  private:
    const std::size_t capacity_;
};

}  // namespace test
