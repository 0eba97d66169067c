#include "handset/base/whole_line.h"

namespace handset {
namespace {

// On a byte that no file reaches. What is no file, such as a console, has no locks and needs none.
class CAppendLock {
  public:
    explicit CAppendLock(HANDLE file) : file_(file) {
        place_.OffsetHigh = 0x7FFFFFFF;
        locked_ = LockFileEx(file_, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &place_) != FALSE;
    }
    ~CAppendLock() {
        if (locked_) UnlockFileEx(file_, 0, 1, 0, &place_);
    }
    CAppendLock(const CAppendLock&) = delete;
    CAppendLock& operator=(const CAppendLock&) = delete;

  private:
    HANDLE file_;
    OVERLAPPED place_{};
    bool locked_ = false;
};

}  // namespace

void WriteWhole(HANDLE file, const void* data, std::size_t size) {
    if (file == nullptr || file == INVALID_HANDLE_VALUE) return;
    const CAppendLock lock(file);
    DWORD written = 0;
    WriteFile(file, data, static_cast<DWORD>(size), &written, nullptr);
}

}  // namespace handset
