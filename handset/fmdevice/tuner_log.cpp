// Appends to the log of the tuner device's calls.
#include "handset/fmdevice/tuner_log.h"

#include <cwchar>
#include <mutex>

#include "handset/base/owned.h"
#include "handset/base/utf8.h"
#include "handset/base/whole_line.h"
#include "handset/fmdevice/band/host_file.h"
#include "handset/state/handset_state.h"

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

}  // namespace

HRESULT LogCall(const std::wstring& call, HRESULT result, const std::wstring& out) {
    const std::wstring path = handset::StateString(L"TunerLog", L"");
    if (path.empty()) return result;
    const std::wstring hostPath = ReachableHostPath(path);
    if (hostPath.empty()) return result;
    const std::string line =
        handset::Utf8(call + L" -> " + ResultText(result) + (out.empty() ? L"" : L": " + out)) + '\n';

    const std::lock_guard<std::mutex> lock(g_logLock);
    const handset::OwnedHandle file(
        handset::Opened(CreateFileW(hostPath.c_str(), FILE_APPEND_DATA | SYNCHRONIZE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)));
    if (!file) return result;
    handset::WriteWhole(file.get(), line.data(), line.size());
    return result;
}

}  // namespace fm
