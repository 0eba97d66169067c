// Modules and sounds: what is named by a path is looked for in the device's file system.
#include <windows.h>

#include <mmsystem.h>

#include <algorithm>
#include <cwchar>
#include <string>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/handset_state.h"

namespace {

using coredll::CallKind;
using coredll::CCallGuard;
using handset::CDevicePath;
using handset::OnDevice;

// A bare name is looked for where modules are looked for, first beside the program.
bool IsBareName(const wchar_t* name) {
    return name != nullptr && std::wcspbrk(name, L"\\/:") == nullptr;
}

HMODULE Load(const wchar_t* name, DWORD flags) {
    if (IsBareName(name)) return LoadLibraryExW(name, nullptr, flags);
    const CDevicePath path = OnDevice(name);
    return path ? LoadLibraryExW(path.host(), nullptr, flags) : nullptr;
}

// A sound is a resource, an alias of the system or a file; only a file is named by a path.
std::wstring SoundFile(const wchar_t* sound, DWORD flags) {
    const CDevicePath path = OnDevice(sound);
    const bool otherKind = (flags & (SND_MEMORY | SND_RESOURCE | SND_ALIAS)) != 0;
    return sound == nullptr || otherKind || IsBareName(sound) || !path ? L"" : path.host();
}

}  // namespace

COREDLL_EXPORT HMODULE WINAPI DeviceLoadLibraryW(const wchar_t* name) try {
    const CCallGuard guard(CallKind::CallsBack);
    return Load(name, 0);
} catch (...) {
    return handset::EdgeAnswer<HMODULE>();
}

COREDLL_EXPORT HMODULE WINAPI DeviceLoadLibraryExW(const wchar_t* name, HANDLE /*file*/, DWORD flags) try {
    const CCallGuard guard(CallKind::CallsBack);
    return Load(name, flags);
} catch (...) {
    return handset::EdgeAnswer<HMODULE>();
}

COREDLL_EXPORT DWORD WINAPI DeviceGetModuleFileNameW(HMODULE module, wchar_t* name, DWORD length) try {
    const CCallGuard guard;
    std::wstring host(handset::kLongestHostPath, L'\0');
    const DWORD size = GetModuleFileNameW(module, host.data(), handset::kLongestHostPath);
    if (size == 0 || name == nullptr || length == 0) return 0;
    host.resize(size);
    const std::wstring device = handset::DevicePathOf(host);
    const std::wstring& path = device.empty() ? host : device;
    const std::size_t fits = std::min<std::size_t>(path.size(), length - 1);
    std::wmemcpy(name, path.data(), fits);
    name[fits] = L'\0';
    if (fits == path.size()) return static_cast<DWORD>(fits);
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return length;
} catch (...) {
    return handset::EdgeAnswer<DWORD>();
}

COREDLL_EXPORT BOOL WINAPI DevicePlaySoundW(const wchar_t* sound, HMODULE module, DWORD flags) try {
    const CCallGuard guard(CallKind::Waits);
    const std::wstring file = SoundFile(sound, flags);
    return PlaySoundW(file.empty() ? sound : file.c_str(), module, flags);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI DevicesndPlaySoundW(const wchar_t* sound, UINT flags) try {
    const CCallGuard guard(CallKind::Waits);
    const std::wstring file = SoundFile(sound, flags);
    return sndPlaySoundW(file.empty() ? sound : file.c_str(), flags);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
