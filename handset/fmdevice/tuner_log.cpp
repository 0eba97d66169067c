// Appends to the log of the tuner device's calls.
#include "handset/fmdevice/tuner_log.h"

#include <cwchar>
#include <mutex>

#include "handset/fmdevice/host_file.h"
#include "handset/state/handset_state.h"
#include "handset/state/utf8_text.h"

namespace fm {
namespace {

// Guards nothing in memory: it keeps the threads of this process from waiting for the file's lock in turns.
std::mutex g_logLock;

std::wstring ResultText(HRESULT result) {
    if (SUCCEEDED(result)) return std::to_wstring(result);
    wchar_t text[16];
    _snwprintf(text, std::size(text), L"0x%08lX", static_cast<unsigned long>(result));
    return text;
}

// An append is two steps on some hosts (find the end, write there); a lock on a byte that no file reaches
// makes them one for all processes.
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

HRESULT LogCall(const std::wstring& call, HRESULT result, const std::wstring& out) {
    const std::wstring path = handset::StateString(L"TunerLog", L"");
    if (path.empty()) return result;
    const std::wstring hostPath = ReachableHostPath(path);
    if (hostPath.empty()) return result;
    const std::string line =
        handset::Utf8(call + L" -> " + ResultText(result) + (out.empty() ? L"" : L": " + out)) + '\n';

    const std::lock_guard<std::mutex> lock(g_logLock);
    const CFileHandle file(CreateFileW(hostPath.c_str(), FILE_APPEND_DATA | SYNCHRONIZE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                       OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return result;
    const CAppendLock whole(file.Get());
    DWORD written = 0;
    WriteFile(file.Get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    return result;
}

}  // namespace fm
