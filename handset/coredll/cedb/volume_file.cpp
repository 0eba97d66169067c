// A volume's file on the host.
#include "handset/coredll/cedb/volume_file.h"

#include "handset/base/owned.h"
#include "handset/base/utf8.h"
#include "handset/coredll/cedb/engine/volume.h"
#include "handset/coredll/cedb/errors.h"
#include "handset/state/handset_state.h"

namespace cedb {
namespace {

constexpr std::uint64_t kRoomForOneWrite_bytes = 16384;

std::wstring FullPath(const wchar_t* path) {
    wchar_t full[2 * MAX_PATH];
    const DWORD length = GetFullPathNameW(path, static_cast<DWORD>(std::size(full)), full, nullptr);
    return length == 0 || length >= std::size(full) ? L"" : std::wstring(full, length);
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// Looks at the file's beginning without SQLite: another program's file is not to be touched in any way.
DWORD LookAtFile(const std::wstring& path) {
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const handset::OwnedHandle file(
        handset::Opened(CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr)));
    if (!file) return GetLastError();
    std::string header(kVolumeHeader_bytes, '\0');
    DWORD read = 0;
    if (!ReadFile(file.get(), header.data(), static_cast<DWORD>(header.size()), &read, nullptr)) {
        return GetLastError();
    }
    header.resize(read);
    return LooksLikeVolume(header) ? ERROR_SUCCESS : ERROR_BAD_FORMAT;
}

// A journal that a killed process left belongs to the file as it was; replayed into another one it would
// destroy that. So the old volume is put in order before it is replaced.
DWORD RetireJournal(const std::wstring& path, const CCollator& collator) {
    const std::wstring journal = path + L"-journal";
    if (!Exists(journal)) return ERROR_SUCCESS;
    if (LookAtFile(path) == ERROR_SUCCESS) {
        CVolume old(collator);
        const Status status = old.Open(handset::Utf8(path));
        if (status == Status::Ok) old.Settle();
        const bool beyondRepair = status == Status::Corrupt || status == Status::NotAVolume;
        if (status != Status::Ok && !beyondRepair) return ErrorOf(status, ERROR_FILE_NOT_FOUND);
    }
    if (DeleteFileW(journal.c_str()) || GetLastError() == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    return GetLastError();
}

// Makes the volume under another name first: a process that is killed meanwhile leaves the old file, or none.
DWORD MakeFile(const std::wstring& path, bool replace, const CCollator& collator) {
    if (!MayWrite(path)) return ERROR_DISK_FULL;
    wchar_t suffix[32];
    swprintf(suffix, std::size(suffix), L".new-%lx", GetCurrentProcessId());
    const std::wstring fresh = path + suffix;
    DeleteFileW(fresh.c_str());
    const Status made = CVolume::Create(handset::Utf8(fresh), GetSystemDefaultLCID(), collator);
    DWORD error = ErrorOf(made, ERROR_PATH_NOT_FOUND);
    if (made == Status::AccessDenied) error = ERROR_PATH_NOT_FOUND;
    if (error == ERROR_SUCCESS) {
        const bool takesPlace = replace || !Exists(path);
        if (takesPlace) error = RetireJournal(path, collator);
        const DWORD how = MOVEFILE_WRITE_THROUGH | (replace ? MOVEFILE_REPLACE_EXISTING : 0);
        if (error == ERROR_SUCCESS && !MoveFileExW(fresh.c_str(), path.c_str(), how)) {
            error = GetLastError();
        }
    }
    if (error != ERROR_SUCCESS) DeleteFileW(fresh.c_str());
    if (error == ERROR_FILE_EXISTS) return ERROR_ALREADY_EXISTS;
    return error == ERROR_SHARING_VIOLATION ? ERROR_ACCESS_DENIED : error;
}

DWORD OpenAlways(const std::wstring& path, const CCollator& collator) {
    const DWORD present = LookAtFile(path);
    if (present != ERROR_FILE_NOT_FOUND) return present;
    const DWORD made = MakeFile(path, false, collator);
    // Another process was faster.
    return made == ERROR_ALREADY_EXISTS ? LookAtFile(path) : made;
}

}  // namespace

DWORD FindVolumeFile(const wchar_t* name, std::wstring* path) {
    if (name == nullptr || name[0] == L'\0' || wcslen(name) >= MAX_PATH) return ERROR_INVALID_PARAMETER;
    const handset::CDevicePath file = handset::OnDevice(name);
    if (!file) return ERROR_PATH_NOT_FOUND;
    *path = FullPath(file.host());
    return path->empty() ? ERROR_INVALID_PARAMETER : ERROR_SUCCESS;
}

DWORD PrepareVolumeFile(const std::wstring& path, DWORD flags, const CCollator& collator) {
    switch (flags) {
        case CREATE_NEW:
            return MakeFile(path, false, collator);
        case CREATE_ALWAYS:
            return MakeFile(path, true, collator);
        case OPEN_EXISTING:
            return LookAtFile(path);
        case OPEN_ALWAYS:
            return OpenAlways(path, collator);
        case TRUNCATE_EXISTING: {
            const DWORD present = LookAtFile(path);
            return present == ERROR_SUCCESS ? MakeFile(path, true, collator) : present;
        }
        default:
            return ERROR_INVALID_PARAMETER;
    }
}

bool MayWrite(const std::wstring& path) {
    if (handset::FaultInjected(L"database-write")) return false;
    const std::wstring root = FullPath(handset::DeviceRoot().c_str());
    const bool onCard = handset::IsOnStorageCard(handset::DevicePathOfHost(path, root));
    const auto free = handset::StateQword(onCard ? L"StorageCardFree" : L"ObjectStoreFree");
    return !free || *free >= kRoomForOneWrite_bytes;
}

}  // namespace cedb
