// CeCreateDatabaseEx2 and CeOpenDatabaseEx2.
#include <algorithm>

#include "handset/base/module_edge.h"
#include "handset/coredll/cedb/errors.h"
#include "handset/coredll/cedb/mounts.h"
#include "handset/coredll/cedb/volume_file.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/coredll_exports.h"

namespace {

using namespace cedb;

constexpr DWORD kKnownInfoFlags = CEDB_VALIDCREATE | CEDB_VALIDMODTIME | CEDB_NOCOMPRESS;

bool ToSortOrder(const SORTORDERSPECEX& sort, cedb::SortOrder* order) {
    if (sort.wVersion != SORTORDERSPECEX_VERSION || sort.wNumProps > CEDB_MAXSORTPROP) return false;
    order->unique = (sort.wKeyFlags & CEDB_SORT_UNIQUE) != 0;
    order->columns.clear();
    for (WORD i = 0; i < sort.wNumProps; ++i) {
        order->columns.push_back({static_cast<cedb::PropertyId>(sort.rgPropID[i]), sort.rgdwFlags[i]});
    }
    return true;
}

std::u16string ToText(const wchar_t* text, std::size_t length) {
    return std::u16string(reinterpret_cast<const char16_t*>(text), length);
}

bool ToInfo(const CEDBASEINFOEX& source, cedb::DatabaseInfo* info) {
    const bool named = (source.dwFlags & CEDB_VALIDNAME) != 0;
    if (source.wVersion != CEDBASEINFOEX_VERSION || !named || (source.dwFlags & ~kKnownInfoFlags) != 0)
        return false;
    info->name = ToText(source.szDbaseName, wcsnlen(source.szDbaseName, CEDB_MAXDBASENAMELEN));
    if ((source.dwFlags & CEDB_VALIDTYPE) != 0) info->type = source.dwDbaseType;
    info->flags = source.dwFlags & CEDB_NOCOMPRESS;
    if ((source.dwFlags & CEDB_VALIDSORTSPEC) == 0) return true;
    if (source.wNumSortOrder > CEDB_MAXSORTORDER) return false;
    info->orders.resize(source.wNumSortOrder);
    for (WORD i = 0; i < source.wNumSortOrder; ++i) {
        if (!ToSortOrder(source.rgSortSpecs[i], &info->orders[i])) return false;
    }
    return true;
}

// Which of the database's sort orders is asked for. False when it has no such order.
bool ChooseSort(const cedb::DatabaseInfo& info, const SORTORDERSPECEX* asked,
                std::optional<std::size_t>* sort) {
    cedb::SortOrder wanted;
    if (asked == nullptr) return true;
    if (!ToSortOrder(*asked, &wanted)) return false;
    if (wanted.columns.empty()) return true;
    const auto found =
        std::find_if(info.orders.begin(), info.orders.end(),
                     [&](const cedb::SortOrder& order) { return order.columns == wanted.columns; });
    if (found == info.orders.end()) return false;
    *sort = static_cast<std::size_t>(found - info.orders.begin());
    return true;
}

CEOID FailToCreate(DWORD error) {
    SetLastError(error);
    return 0;
}

DWORD Open(PCEGUID volume, PCEOID oid, LPCWSTR name, const SORTORDERSPECEX* sort, DWORD flags,
           HANDLE* handle) {
    const auto mounted = FindVolume(volume);
    if (mounted == nullptr || oid == nullptr || (flags & ~CEDB_AUTOINCREMENT) != 0)
        return ERROR_INVALID_PARAMETER;
    if (*oid == 0 && (name == nullptr || *name == L'\0')) return ERROR_INVALID_PARAMETER;
    cedb::DatabaseInfo info;
    {
        const std::lock_guard<std::mutex> inUse(mounted->lock);
        const cedb::Status status = *oid != 0
                                        ? mounted->volume.FindDatabase(*oid, &info)
                                        : mounted->volume.FindDatabase(ToText(name, wcslen(name)), &info);
        if (status != cedb::Status::Ok) return ErrorOf(status, ERROR_FILE_NOT_FOUND);
    }
    std::optional<std::size_t> chosen;
    if (!ChooseSort(info, sort, &chosen)) return ERROR_INVALID_PARAMETER;
    const cedb::Oid found = info.oid;
    *handle = AddDatabase(std::make_shared<OpenDatabase>(OpenDatabase{
        mounted,
        cedb::CCursor(mounted->volume, std::move(info), chosen, (flags & CEDB_AUTOINCREMENT) != 0)}));
    if (*handle == INVALID_HANDLE_VALUE) return ERROR_NOT_ENOUGH_MEMORY;
    *oid = found;
    return ERROR_SUCCESS;
}

}  // namespace

COREDLL_EXPORT CEOID WINAPI CeCreateDatabaseEx2(PCEGUID volume, CEDBASEINFOEX* info) try {
    const coredll::CCallGuard guard;
    const auto mounted = FindVolume(volume);
    cedb::DatabaseInfo wanted;
    if (mounted == nullptr || info == nullptr || !ToInfo(*info, &wanted))
        return FailToCreate(ERROR_INVALID_PARAMETER);
    const std::lock_guard<std::mutex> inUse(mounted->lock);
    cedb::DatabaseInfo present;
    // A name that exists is told even while nothing can be written: that is how the database is opened.
    const bool exists = mounted->volume.FindDatabase(wanted.name, &present) == cedb::Status::Ok;
    if (!exists && !MayWrite(mounted->path)) return FailToCreate(ERROR_DISK_FULL);
    cedb::Oid oid = 0;
    const cedb::Status status = mounted->volume.CreateDatabase(wanted, &oid);
    return status == cedb::Status::Ok ? oid : FailToCreate(ErrorOf(status, ERROR_INVALID_PARAMETER));
} catch (...) {
    return handset::EdgeAnswer<CEOID>();
}

COREDLL_EXPORT HANDLE WINAPI CeOpenDatabaseEx2(PCEGUID volume, PCEOID oid, LPWSTR name, SORTORDERSPECEX* sort,
                                               DWORD flags, CENOTIFYREQUEST* request) try {
    const coredll::CCallGuard guard;
    HANDLE handle = INVALID_HANDLE_VALUE;
    // Device differs: nobody is told about changes that others make to the database.
    const DWORD error =
        request != nullptr ? ERROR_NOT_SUPPORTED : Open(volume, oid, name, sort, flags, &handle);
    if (error != ERROR_SUCCESS) SetLastError(error);
    return handle;
} catch (...) {
    return handset::EdgeAnswer<HANDLE>(INVALID_HANDLE_VALUE);
}
