#include "handset/base/device_path.h"

#include <algorithm>
#include <cwctype>
#include <vector>

namespace handset {
namespace {

constexpr wchar_t kStorageCard[] = L"\\Storage Card";
constexpr wchar_t kSeparators[] = L"\\/";

bool SameLetters(const std::wstring& one, const std::wstring& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](wchar_t a, wchar_t b) { return std::towlower(a) == std::towlower(b); });
}

bool IsSeparator(wchar_t c) {
    return c == L'\\' || c == L'/';
}

bool IsHostPath(const std::wstring& path) {
    const bool drive = path.size() > 1 && path[1] == L':' && !IsSeparator(path[0]);
    return path.empty() || drive || path.compare(0, 2, L"\\\\") == 0;
}

// A pattern keeps its end: "*." are the names without an extension.
std::wstring WithoutIdleEnd(const std::wstring& name) {
    if (name.find_first_of(L"*?") != std::wstring::npos) return name;
    return name.substr(0, name.find_last_not_of(L" .") + 1);
}

// From the root, every step resolved; a backslash at the end is kept.
std::wstring Resolved(const std::wstring& path) {
    std::vector<std::wstring> steps;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find_first_of(kSeparators, begin), path.size());
        const std::wstring step = path.substr(begin, end - begin);
        begin = end + 1;
        if (step == L"..") {
            if (!steps.empty()) steps.pop_back();
            continue;
        }
        if (const std::wstring name = WithoutIdleEnd(step); !name.empty()) steps.push_back(name);
    }
    std::wstring resolved;
    for (const std::wstring& step : steps) resolved += L"\\" + step;
    return resolved.empty() || IsSeparator(path.back()) ? resolved + L"\\" : resolved;
}

std::wstring WithBackslashes(std::wstring path) {
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

}  // namespace

CDevicePath::CDevicePath(const wchar_t* path, const std::wstring& root, bool (*cardIn)())
    : given_(path != nullptr) {
    if (!given_) return;
    host_ = path;
    if (IsHostPath(host_)) return;
    device_ = Resolved(host_);
    host_ = root.empty() ? L"" : root + device_;
    reachable_ = !root.empty() && (!onStorageCard() || cardIn());
}

bool CDevicePath::onStorageCard() const {
    return IsOnStorageCard(device_);
}

bool IsOnStorageCard(const std::wstring& path) {
    constexpr std::size_t kLength = std::size(kStorageCard) - 1;
    return SameLetters(path.substr(0, kLength), kStorageCard) &&
           (path.size() == kLength || path[kLength] == L'\\');
}

std::wstring DevicePathOfHost(const std::wstring& hostPath, const std::wstring& root) {
    const std::wstring folder = WithBackslashes(root);
    const std::wstring path = WithBackslashes(hostPath);
    if (folder.empty() || !SameLetters(path.substr(0, folder.size()), folder)) return L"";
    if (path.size() == folder.size()) return L"\\";
    return path[folder.size()] == L'\\' ? path.substr(folder.size()) : L"";
}

}  // namespace handset
