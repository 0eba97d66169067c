// The file, and the handset's state of the disk that it lies on.
#include "handset/capture/files/device_file.h"

#include <algorithm>

#include "handset/base/file_time.h"
#include "handset/capture/files/tuned_tags.h"
#include "handset/state/handset_state.h"

namespace capture {
namespace {

using handset::Ticks;

// Reading the state takes longer than writing a sample.
constexpr std::uint64_t kLook_ms = 200;

handset::OwnedHandle Open(const handset::CDevicePath& path, DWORD disposition) {
    if (!path || path.host() == nullptr) return nullptr;
    // To a privileged user some hosts would give a read-only file all the same.
    const DWORD attributes = GetFileAttributesW(path.host());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    return handset::OwnedHandle(handset::Opened(CreateFileW(
        path.host(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

HRESULT LastFailure() {
    const DWORD error = GetLastError();
    return error != ERROR_SUCCESS ? HRESULT_FROM_WIN32(error) : E_FAIL;
}

}  // namespace

HRESULT CDeviceFile::Check(const std::wstring& path) {
    return Open(handset::OnDevice(path.c_str()), OPEN_ALWAYS) ? S_OK : LastFailure();
}

HRESULT CDeviceFile::Create(const std::wstring& path) {
    Close();
    const handset::CDevicePath place = handset::OnDevice(path.c_str());
    file_ = Open(place, CREATE_ALWAYS);
    if (!IsOpen()) return LastFailure();
    onDevice_ = !place.device().empty();
    onCard_ = place.onStorageCard();
    size_ = 0;
    looked_ms_ = 0;
    error_ = S_OK;
    Stamp();
    return S_OK;
}

// The host writes its own time with every change.
void CDeviceFile::Stamp() {
    constexpr std::int64_t kSame_100ns = 20'000'000;
    FILETIME host;
    GetSystemTimeAsFileTime(&host);
    const FILETIME now = HandsetFileTime();
    const std::int64_t apart = static_cast<std::int64_t>(Ticks(now) - Ticks(host));
    if (apart > -kSame_100ns && apart < kSame_100ns) return;
    SetFileTime(file_.get(), size_ == 0 ? &now : nullptr, nullptr, &now);
}

void CDeviceFile::Close() {
    if (IsOpen()) Stamp();
    file_.reset();
}

bool CDeviceFile::WriteAt(std::uint64_t offset, const void* data, std::size_t size) {
    if (!IsOpen() || !RoomFor(static_cast<std::size_t>(std::max(offset + size, size_) - size_))) return false;
    LARGE_INTEGER place;
    place.QuadPart = static_cast<LONGLONG>(offset);
    DWORD written = 0;
    if (!SetFilePointerEx(file_.get(), place, nullptr, FILE_BEGIN) ||
        !WriteFile(file_.get(), data, static_cast<DWORD>(size), &written, nullptr))
        return Failed(GetLastError());
    size_ = std::max(size_, offset + written);
    Stamp();
    return written == size || Failed(ERROR_DISK_FULL);
}

bool CDeviceFile::RoomFor(std::size_t bytes) {
    if (!onDevice_ || GetTickCount64() - looked_ms_ < kLook_ms) return true;
    looked_ms_ = GetTickCount64();
    if (onCard_ && !handset::StorageCardPresent()) return Failed(ERROR_NOT_READY);
    const auto free = handset::StateQword(onCard_ ? L"StorageCardFree" : L"ObjectStoreFree");
    return !free || *free >= bytes || Failed(ERROR_DISK_FULL);
}

bool CDeviceFile::Failed(DWORD error) {
    // The next write looks again.
    looked_ms_ = 0;
    error_ = HRESULT_FROM_WIN32(error);
    return false;
}

void CDeviceFile::Truncate(std::uint64_t size) {
    if (!IsOpen() || size >= size_) return;
    LARGE_INTEGER place;
    place.QuadPart = static_cast<LONGLONG>(size);
    if (SetFilePointerEx(file_.get(), place, nullptr, FILE_BEGIN) && SetEndOfFile(file_.get())) size_ = size;
}

}  // namespace capture
