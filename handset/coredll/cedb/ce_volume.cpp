// CeMountDBVol and what else concerns a volume as a whole.
#include "handset/base/module_edge.h"
#include "handset/coredll/cedb/errors.h"
#include "handset/coredll/cedb/mounts.h"
#include "handset/coredll/cedb/volume_file.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/coredll_exports.h"

namespace {

using namespace cedb;

BOOL Answer(DWORD error) {
    if (error != ERROR_SUCCESS) SetLastError(error);
    return error == ERROR_SUCCESS;
}

DWORD Mount(LPCWSTR name, DWORD flags, CEGUID* guid) {
    std::wstring path;
    if (const DWORD error = FindVolumeFile(name, &path)) return error;
    return MountVolume(path, flags & ~EDB_MOUNT_FLAG, guid);
}

}  // namespace

COREDLL_EXPORT BOOL WINAPI CeMountDBVol(PCEGUID volume, LPWSTR name, DWORD flags) try {
    const coredll::CCallGuard guard;
    if (volume == nullptr) return Answer(ERROR_INVALID_PARAMETER);
    CREATE_INVALIDGUID(volume);
    return Answer(Mount(name, flags, volume));
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI CeUnmountDBVol(PCEGUID volume) try {
    const coredll::CCallGuard guard;
    if (volume == nullptr) return Answer(ERROR_INVALID_PARAMETER);
    return Answer(UnmountVolume(*volume) ? ERROR_SUCCESS : ERROR_NOT_FOUND);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI CeFlushDBVol(PCEGUID volume) try {
    const coredll::CCallGuard guard;
    // What a call wrote is on the disk already; without a volume all of them are meant.
    return Answer(volume == nullptr || FindVolume(volume) != nullptr ? ERROR_SUCCESS : ERROR_NOT_FOUND);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI CeChangeDatabaseLCID(PCEGUID volume, DWORD lcid) try {
    const coredll::CCallGuard guard;
    if (volume == nullptr) return Answer(ERROR_INVALID_PARAMETER);
    const auto mounted = FindVolume(volume);
    if (mounted == nullptr) return Answer(ERROR_NOT_FOUND);
    // The order of the records would change under a cursor.
    if (HasOpenDatabases(*mounted)) return Answer(ERROR_SHARING_VIOLATION);
    const std::lock_guard<std::mutex> inUse(mounted->lock);
    return Answer(ErrorOf(mounted->volume.ChangeLocale(lcid), ERROR_INVALID_PARAMETER));
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
