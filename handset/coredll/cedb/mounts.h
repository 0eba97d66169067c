// The mounted volumes and open databases of this process.
#pragma once

#include <windows.h>

#include <memory>
#include <mutex>
#include <string>

#include "handset/coredll/cedb/engine/cursor.h"
#include "handset/include/cedb.h"

namespace cedb {

struct MountedVolume {
    MountedVolume(const CCollator& collator, std::wstring hostPath)
        : path(std::move(hostPath)), volume(collator) {}

    const std::wstring path;
    CEGUID guid{};
    int mounts = 0;     // guarded by the table's lock
    int databases = 0;  // open ones; guarded by the table's lock
    std::mutex lock;    // guards the volume and the cursors of its databases
    CVolume volume;
};

struct OpenDatabase {
    std::shared_ptr<MountedVolume> mounted;
    CCursor cursor;
};

// Gives a Win32 error code and on success the volume's identifier.
DWORD MountVolume(const std::wstring& path, DWORD flags, CEGUID* guid);
// False when it is not mounted.
bool UnmountVolume(const CEGUID& guid);
// Null when it is not mounted.
std::shared_ptr<MountedVolume> FindVolume(const CEGUID* guid);

// In this process.
bool HasOpenDatabases(const MountedVolume& mounted);

// A handle that CloseHandle of the device closes; INVALID_HANDLE_VALUE when the system has none left.
HANDLE AddDatabase(std::shared_ptr<OpenDatabase> database);
// Null for any other handle.
std::shared_ptr<OpenDatabase> FindOpenDatabase(HANDLE handle);

}  // namespace cedb

// Closes the handle if it is one of an open database; otherwise leaves it alone and gives FALSE.
extern "C" BOOL CedbCloseHandle(HANDLE handle);
