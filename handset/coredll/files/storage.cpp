// Free space of the object store and of the storage card, and the folder for temporary files.
#include <algorithm>
#include <cwchar>
#include <string>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/handset_state.h"

namespace {

using coredll::CCallGuard;
using handset::CDevicePath;
using handset::OnDevice;

constexpr wchar_t kTemporaryFolder[] = L"\\Temp\\";

void Put(ULARGE_INTEGER* where, std::uint64_t value) {
    if (where != nullptr) where->QuadPart = value;
}

}  // namespace

// No path: the object store. The state's free space, where there is one, takes the place of the host's.
COREDLL_EXPORT BOOL WINAPI DeviceGetDiskFreeSpaceExW(const wchar_t* path, ULARGE_INTEGER* freeToCaller,
                                                     ULARGE_INTEGER* total, ULARGE_INTEGER* free) try {
    const CCallGuard guard;
    const CDevicePath folder = OnDevice(path != nullptr ? path : L"\\");
    ULARGE_INTEGER hostFree{};
    ULARGE_INTEGER hostTotal{};
    if (!folder || !GetDiskFreeSpaceExW(folder.host(), nullptr, &hostTotal, &hostFree)) return FALSE;
    const auto set =
        folder.device().empty()
            ? std::nullopt
            : handset::StateQword(folder.onStorageCard() ? L"StorageCardFree" : L"ObjectStoreFree");
    const std::uint64_t bytes = set.value_or(hostFree.QuadPart);
    Put(freeToCaller, bytes);
    Put(free, bytes);
    Put(total, std::max<std::uint64_t>(hostTotal.QuadPart, bytes));
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

// The folder is there for whoever asks for it.
COREDLL_EXPORT DWORD WINAPI DeviceGetTempPathW(DWORD length, wchar_t* path) try {
    const CCallGuard guard;
    const CDevicePath folder = OnDevice(kTemporaryFolder);
    if (folder) CreateDirectoryW(folder.host(), nullptr);
    const DWORD needed = static_cast<DWORD>(std::size(kTemporaryFolder));
    if (length < needed || path == nullptr) return needed;
    std::wmemcpy(path, kTemporaryFolder, needed);
    return needed - 1;
} catch (...) {
    return handset::EdgeAnswer<DWORD>();
}

COREDLL_EXPORT UINT WINAPI DeviceGetTempFileNameW(const wchar_t* folder, const wchar_t* prefix, UINT unique,
                                                  wchar_t* name) try {
    const CCallGuard guard;
    const CDevicePath path = OnDevice(folder);
    if (!path) return 0;
    wchar_t made[MAX_PATH];
    const UINT number = GetTempFileNameW(path.host(), prefix, unique, made);
    if (number == 0) return 0;
    const std::wstring device = handset::DevicePathOf(made);
    std::wcscpy(name, device.empty() ? made : device.c_str());
    return number;
} catch (...) {
    return handset::EdgeAnswer<UINT>();
}
