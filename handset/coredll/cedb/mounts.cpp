// The mounted volumes and open databases of this process.
#include "handset/coredll/cedb/mounts.h"

#include <cstring>
#include <map>
#include <vector>

#include "handset/base/utf8.h"
#include "handset/coredll/cedb/errors.h"
#include "handset/coredll/cedb/volume_file.h"
#include "handset/coredll/cedb/windows_collator.h"

namespace cedb {
namespace {

struct Table {
    std::mutex lock;  // guards everything in here; taken before a volume's lock, never after it
    std::vector<std::shared_ptr<MountedVolume>> volumes;
    std::map<HANDLE, std::shared_ptr<OpenDatabase>> databases;
    CWindowsCollator collator;
};

// Never destroyed: a thread may still be in a call when the process ends.
Table& TheTable() {
    static Table& table = *new Table;
    return table;
}

bool SameGuid(const CEGUID& left, const CEGUID& right) {
    return std::memcmp(&left, &right, sizeof left) == 0;
}

std::shared_ptr<MountedVolume> ByGuid(const Table& table, const CEGUID& guid) {
    for (const auto& mounted : table.volumes) {
        if (SameGuid(mounted->guid, guid)) return mounted;
    }
    return nullptr;
}

std::shared_ptr<MountedVolume> ByPath(const Table& table, const std::wstring& path) {
    for (const auto& mounted : table.volumes) {
        if (_wcsicmp(mounted->path.c_str(), path.c_str()) == 0) return mounted;
    }
    return nullptr;
}

// The volume's own identifier, unless a copy of it is mounted already.
CEGUID FreeGuid(const Table& table, const VolumeId& id) {
    CEGUID guid;
    static_assert(sizeof guid == sizeof id);
    std::memcpy(&guid, id.data(), sizeof guid);
    while (ByGuid(table, guid) != nullptr) ++guid.Data4;
    return guid;
}

void CloseIfUnused(Table& table, const std::shared_ptr<MountedVolume>& mounted) {
    if (mounted->mounts > 0 || mounted->databases > 0) return;
    for (auto at = table.volumes.begin(); at != table.volumes.end(); ++at) {
        if (*at != mounted) continue;
        table.volumes.erase(at);
        break;
    }
    const std::lock_guard<std::mutex> inUse(mounted->lock);
    mounted->volume.Settle();
}

DWORD MountAgain(MountedVolume& mounted, DWORD flags) {
    if (flags == CREATE_NEW) return ERROR_ALREADY_EXISTS;
    if (flags == CREATE_ALWAYS || flags == TRUNCATE_EXISTING) return ERROR_ACCESS_DENIED;
    ++mounted.mounts;
    return ERROR_SUCCESS;
}

}  // namespace

DWORD MountVolume(const std::wstring& path, DWORD flags, CEGUID* guid) {
    if (flags < CREATE_NEW || flags > TRUNCATE_EXISTING) return ERROR_INVALID_PARAMETER;
    Table& table = TheTable();
    const std::lock_guard<std::mutex> guard(table.lock);
    if (const auto present = ByPath(table, path)) {
        const DWORD error = MountAgain(*present, flags);
        if (error == ERROR_SUCCESS) *guid = present->guid;
        return error;
    }
    DWORD error = PrepareVolumeFile(path, flags, table.collator);
    if (error != ERROR_SUCCESS) return error;
    const auto mounted = std::make_shared<MountedVolume>(table.collator, path);
    error = ErrorOf(mounted->volume.Open(handset::Utf8(path)), ERROR_FILE_NOT_FOUND);
    if (error != ERROR_SUCCESS) return error;
    mounted->guid = FreeGuid(table, mounted->volume.Id());
    mounted->mounts = 1;
    table.volumes.push_back(mounted);
    *guid = mounted->guid;
    return ERROR_SUCCESS;
}

bool UnmountVolume(const CEGUID& guid) {
    Table& table = TheTable();
    const std::lock_guard<std::mutex> guard(table.lock);
    const auto mounted = ByGuid(table, guid);
    if (mounted == nullptr) return false;
    if (mounted->mounts > 0) --mounted->mounts;
    CloseIfUnused(table, mounted);
    return true;
}

std::shared_ptr<MountedVolume> FindVolume(const CEGUID* guid) {
    if (guid == nullptr) return nullptr;
    Table& table = TheTable();
    const std::lock_guard<std::mutex> guard(table.lock);
    return ByGuid(table, *guid);
}

bool HasOpenDatabases(const MountedVolume& mounted) {
    const std::lock_guard<std::mutex> guard(TheTable().lock);
    return mounted.databases > 0;
}

HANDLE AddDatabase(std::shared_ptr<OpenDatabase> database) {
    // An event of our own gives the database a number that no other object of the process has.
    const HANDLE handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (handle == nullptr) return INVALID_HANDLE_VALUE;
    Table& table = TheTable();
    const std::lock_guard<std::mutex> guard(table.lock);
    MountedVolume& mounted = *database->mounted;
    try {
        table.databases[handle] = std::move(database);
    } catch (...) {
        CloseHandle(handle);
        throw;
    }
    ++mounted.databases;
    return handle;
}

std::shared_ptr<OpenDatabase> FindOpenDatabase(HANDLE handle) {
    Table& table = TheTable();
    const std::lock_guard<std::mutex> guard(table.lock);
    const auto found = table.databases.find(handle);
    return found == table.databases.end() ? nullptr : found->second;
}

}  // namespace cedb

extern "C" BOOL CedbCloseHandle(HANDLE handle) {
    cedb::Table& table = cedb::TheTable();
    const std::lock_guard<std::mutex> guard(table.lock);
    const auto found = table.databases.find(handle);
    if (found == table.databases.end()) return FALSE;
    const auto mounted = found->second->mounted;
    table.databases.erase(found);
    --mounted->databases;
    cedb::CloseIfUnused(table, mounted);
    return CloseHandle(handle);
}
