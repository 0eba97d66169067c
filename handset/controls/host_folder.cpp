// Folders of the host.
#include "handset/controls/host_folder.h"

#include <windows.h>

#include "handset/base/device_path.h"

namespace panel {
namespace {

using handset::kLongestHostPath;

std::wstring Variable(const wchar_t* name) {
    std::wstring value(kLongestHostPath, L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), kLongestHostPath));
    return value;
}

}  // namespace

std::wstring FullHostPath(const std::wstring& path) {
    std::wstring text = !path.empty() && path[0] == L'/' ? L"Z:" + path : path;
    for (wchar_t& c : text) c = c == L'/' ? L'\\' : c;
    std::wstring full(kLongestHostPath, L'\0');
    full.resize(GetFullPathNameW(text.c_str(), kLongestHostPath, full.data(), nullptr));
    return full;
}

std::wstring SaidPath(const std::wstring& path) {
    const bool ofUnix =
        OnWine() && path.size() > 2 && (path[0] == L'Z' || path[0] == L'z') && path[1] == L':';
    if (!ofUnix) return path;
    std::wstring said = path.substr(2);
    for (wchar_t& c : said) c = c == L'\\' ? L'/' : c;
    return said;
}

bool OnWine() {
    static const bool wine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return wine;
}

std::wstring ProgramFolder() {
    std::wstring path(kLongestHostPath, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), kLongestHostPath));
    return path.substr(0, path.rfind(L'\\'));
}

std::wstring DefaultDeviceRoot() {
    const std::wstring home = Variable(L"KORA_HOME");
    if (!home.empty()) return FullHostPath(home + L"\\device");
    return Variable(L"LOCALAPPDATA") + L"\\Kora Handset\\device";
}

}  // namespace panel
