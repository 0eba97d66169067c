// Paths of the device's file system and where they lie on the host.
#include "handset/coredll/device_path.h"

#include <algorithm>
#include <cwchar>
#include <vector>

#include "handset/state/handset_state.h"

namespace coredll {
namespace {

bool IsHostPath(const std::wstring& path) {
    return path.empty() || path.find(L':') != std::wstring::npos || path.compare(0, 2, L"\\\\") == 0;
}

// From the root, every step resolved; a backslash at the end is kept.
std::wstring Resolved(const std::wstring& path) {
    std::vector<std::wstring> steps;
    std::size_t begin = 0;
    while (begin <= path.size()) {
        const std::size_t end = std::min(path.find_first_of(L"\\/", begin), path.size());
        const std::wstring step = path.substr(begin, end - begin);
        begin = end + 1;
        if (step == L"..") {
            if (!steps.empty()) steps.pop_back();
        } else if (!step.empty() && step != L".") {
            steps.push_back(step);
        }
    }
    std::wstring resolved;
    for (const std::wstring& step : steps) resolved += L"\\" + step;
    const bool folder = path.back() == L'\\' || path.back() == L'/';
    return resolved.empty() || folder ? resolved + L"\\" : resolved;
}

std::wstring WithBackslashes(std::wstring path) {
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

}  // namespace

DevicePath::DevicePath(const wchar_t* path) : given_(path != nullptr) {
    if (!given_) return;
    host_ = path;
    if (IsHostPath(host_)) return;
    device_ = Resolved(host_);
    host_ = handset::HostPath(device_.c_str());
    reachable_ = host_ != device_ && (!onStorageCard() || handset::StorageCardPresent());
    if (!reachable_) SetLastError(ERROR_PATH_NOT_FOUND);
}

bool DevicePath::onStorageCard() const {
    return handset::IsOnStorageCard(device_.c_str());
}

std::wstring DevicePathOfHost(const std::wstring& hostPath) {
    const std::wstring root = WithBackslashes(handset::DeviceRoot());
    const std::wstring path = WithBackslashes(hostPath);
    if (root.empty() || _wcsnicmp(path.c_str(), root.c_str(), root.size()) != 0) return L"";
    if (path.size() == root.size()) return L"\\";
    return path[root.size()] == L'\\' ? path.substr(root.size()) : L"";
}

}  // namespace coredll
