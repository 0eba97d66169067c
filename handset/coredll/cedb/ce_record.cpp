// CeSeekDatabaseEx, CeWriteRecordProps and CeDeleteRecord.
#include "handset/base/module_edge.h"
#include "handset/coredll/cedb/errors.h"
#include "handset/coredll/cedb/mounts.h"
#include "handset/coredll/cedb/property_values.h"
#include "handset/coredll/cedb/volume_file.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/coredll_exports.h"

namespace {

using namespace cedb;

struct SeekRow {
    DWORD type;
    cedb::Seek kind;
    bool byValue;
};

// clang-format off
constexpr SeekRow kSeeks[] = {
    {CEDB_SEEK_CEOID,               cedb::Seek::Number,         false},
    {CEDB_SEEK_BEGINNING,           cedb::Seek::Beginning,      false},
    {CEDB_SEEK_END,                 cedb::Seek::End,            false},
    {CEDB_SEEK_CURRENT,             cedb::Seek::Current,        false},
    {CEDB_SEEK_VALUESMALLER,        cedb::Seek::Smaller,        true},
    {CEDB_SEEK_VALUEFIRSTEQUAL,     cedb::Seek::FirstEqual,     true},
    {CEDB_SEEK_VALUEGREATER,        cedb::Seek::Greater,        true},
    {CEDB_SEEK_VALUENEXTEQUAL,      cedb::Seek::NextEqual,      true},
    {CEDB_SEEK_VALUESMALLEROREQUAL, cedb::Seek::SmallerOrEqual, true},
    {CEDB_SEEK_VALUEGREATEROREQUAL, cedb::Seek::GreaterOrEqual, true},
};
// clang-format on

CEOID Fail(DWORD error) {
    SetLastError(error);
    return 0;
}

bool ToTarget(DWORD type, DWORD_PTR value, WORD values, cedb::SeekTarget* target) {
    for (const SeekRow& row : kSeeks) {
        if (row.type != type) continue;
        target->kind = row.kind;
        const auto number = static_cast<DWORD>(value);
        // A negative distance is a LONG in the DWORD that the device's call has here.
        target->number = row.kind == cedb::Seek::Current ? static_cast<LONG>(number) : std::int64_t{number};
        if (!row.byValue) return true;
        const auto* properties = reinterpret_cast<const CEPROPVAL*>(value);
        if (properties == nullptr) return false;
        target->values.resize(values);
        for (WORD i = 0; i < values; ++i) {
            if (!ToProperty(properties[i], &target->values[i])) return false;
        }
        return true;
    }
    return false;
}

CEOID SeekIn(HANDLE database, DWORD type, DWORD_PTR value, WORD values, LPDWORD index) {
    const coredll::CCallGuard guard;
    const auto open = FindOpenDatabase(database);
    cedb::SeekTarget target;
    if (open == nullptr || !ToTarget(type, value, values, &target)) return Fail(ERROR_INVALID_PARAMETER);
    cedb::Oid oid = 0;
    std::uint32_t before = 0;
    const std::lock_guard<std::mutex> inUse(open->mounted->lock);
    const cedb::Status status = open->cursor.SeekTo(target, &oid, index == nullptr ? nullptr : &before);
    if (status != cedb::Status::Ok) return Fail(ErrorOf(status, ERROR_SEEK));
    if (index != nullptr) *index = before;
    return oid;
}

bool ToChanges(WORD count, const CEPROPVAL* values, std::vector<cedb::PropertyChange>* changes) {
    if (count == 0 || values == nullptr) return false;
    changes->resize(count);
    for (WORD i = 0; i < count; ++i) {
        cedb::PropertyChange& change = (*changes)[i];
        change.remove = (values[i].wFlags & CEDB_PROPDELETE) != 0;
        change.property.id = values[i].propid;
        if (!change.remove && !ToProperty(values[i], &change.property)) return false;
    }
    return true;
}

}  // namespace

COREDLL_EXPORT CEOID WINAPI CeSeekDatabaseEx(HANDLE database, DWORD type, DWORD_PTR value, WORD values,
                                             LPDWORD index) try {
    return SeekIn(database, type, value, values, index);
} catch (...) {
    return handset::EdgeAnswer<CEOID>();
}

COREDLL_EXPORT CEOID WINAPI CeSeekDatabase(HANDLE database, DWORD type, DWORD_PTR value, LPDWORD index) try {
    return SeekIn(database, type, value, 1, index);
} catch (...) {
    return handset::EdgeAnswer<CEOID>();
}

COREDLL_EXPORT CEOID WINAPI CeWriteRecordProps(HANDLE database, CEOID record, WORD count,
                                               CEPROPVAL* values) try {
    const coredll::CCallGuard guard;
    const auto open = FindOpenDatabase(database);
    std::vector<cedb::PropertyChange> changes;
    if (open == nullptr) return Fail(ERROR_INVALID_HANDLE);
    if (!ToChanges(count, values, &changes)) return Fail(ERROR_INVALID_PARAMETER);
    if (!MayWrite(open->mounted->path)) return Fail(ERROR_DISK_FULL);
    const std::lock_guard<std::mutex> inUse(open->mounted->lock);
    cedb::CVolume& volume = open->mounted->volume;
    const cedb::DatabaseInfo& info = open->cursor.Database();
    cedb::Oid oid = record;
    const cedb::Status status =
        oid == 0 ? volume.InsertRecord(info, changes, &oid) : volume.UpdateRecord(info, oid, changes);
    return status == cedb::Status::Ok ? oid : Fail(ErrorOf(status, ERROR_NOT_FOUND));
} catch (...) {
    return handset::EdgeAnswer<CEOID>();
}

COREDLL_EXPORT BOOL WINAPI CeDeleteRecord(HANDLE database, CEOID record) try {
    const coredll::CCallGuard guard;
    const auto open = FindOpenDatabase(database);
    if (open == nullptr) return Fail(ERROR_INVALID_HANDLE) != 0;
    if (!MayWrite(open->mounted->path)) return Fail(ERROR_DISK_FULL) != 0;
    const std::lock_guard<std::mutex> inUse(open->mounted->lock);
    const cedb::Status status = open->mounted->volume.DeleteRecord(open->cursor.Database(), record);
    if (status != cedb::Status::Ok) return Fail(ErrorOf(status, ERROR_NOT_FOUND)) != 0;
    open->cursor.HasBeenDeleted(record);
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
