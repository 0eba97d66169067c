// The device's files, as the tuner device reads and writes them on the host.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fm {

// A file handle that closes itself.
class CFileHandle {
  public:
    explicit CFileHandle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    ~CFileHandle() { Reset(); }
    CFileHandle(const CFileHandle&) = delete;
    CFileHandle& operator=(const CFileHandle&) = delete;
    CFileHandle(CFileHandle&& other) noexcept : handle_(other.handle_) {
        other.handle_ = INVALID_HANDLE_VALUE;
    }
    CFileHandle& operator=(CFileHandle&& other) noexcept {
        if (this != &other) {
            Reset();
            handle_ = other.handle_;
            other.handle_ = INVALID_HANDLE_VALUE;
        }
        return *this;
    }
    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }
    void Reset() {
        if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
        handle_ = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE handle_;
};

// The host path of a device path; empty while the path lies on a storage card that is out.
[[nodiscard]] std::wstring ReachableHostPath(const std::wstring& devicePath);
// The whole file, if it is there and holds at most `limit` bytes.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> ReadHostFile(const std::wstring& hostPath,
                                                                    std::size_t limit);

}  // namespace fm
