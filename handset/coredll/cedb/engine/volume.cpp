// A volume's file: its making, its recognition, its language.
#include "handset/coredll/cedb/engine/volume.h"

#include <algorithm>

#include "handset/coredll/cedb/engine/schema.h"

namespace cedb {
namespace {

// The SQLite file format, section 1.3: offsets in the database header, numbers big-endian.
constexpr char kMagic[] = "SQLite format 3";
constexpr std::size_t kUserVersionOffset = 60;
constexpr std::size_t kApplicationIdOffset = 68;

std::uint32_t BigEndian32(const std::string& bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) number = number << 8 | static_cast<std::uint8_t>(bytes[at + i]);
    return number;
}

// What the keys of a few telling texts look like. Another host, or a later version of this one, may sort
// otherwise; its keys would not match those in the file.
std::string Fingerprint(const CCollator& collator, std::uint32_t lcid) {
    constexpr const char16_t* kProbes[] = {u"a", u"B-b", u"\u00E9\u00DF", u"\u0416\u4E2D", u"\u30A2\uFF71_1"};
    std::string fingerprint;
    for (const char16_t* probe : kProbes) {
        for (const std::uint32_t flags : {0U, static_cast<std::uint32_t>(kSortCaseInsensitive)}) {
            const std::string key = collator.TextKey(lcid, flags, probe);
            fingerprint += std::to_string(key.size()) + ":" + key;
        }
    }
    return fingerprint;
}

}  // namespace

bool LooksLikeVolume(const std::string& header) {
    return header.size() >= kVolumeHeader_bytes &&
           header.compare(0, sizeof kMagic, kMagic, sizeof kMagic) == 0 &&
           BigEndian32(header, kApplicationIdOffset) == kApplicationId &&
           BigEndian32(header, kUserVersionOffset) == kFormatVersion;
}

Status CVolume::Create(const std::string& path, std::uint32_t lcid, const CCollator& collator) {
    CSqliteConnection connection;
    Status status = connection.Open(path, true);
    // What is left half made is thrown away, so nothing needs to be undone from a file.
    if (status == Status::Ok) status = connection.Execute("PRAGMA journal_mode=MEMORY");
    if (status != Status::Ok) return status;
    CTransaction transaction(connection);
    status = transaction.Begin(CTransaction::Kind::Write);
    const std::string identity = "PRAGMA application_id=" + std::to_string(kApplicationId) +
                                 "; PRAGMA user_version=" + std::to_string(kFormatVersion) + ";";
    if (status == Status::Ok) status = connection.Execute(identity.c_str());
    for (const SchemaRow& row : kSchema) {
        if (status == Status::Ok) status = connection.Execute(row.sql);
    }
    if (status != Status::Ok) return status;
    const std::string fingerprint = Fingerprint(collator, lcid);
    status = connection.Prepare("INSERT INTO volume VALUES (1, 1, ?, ?, randomblob(16))")
                 .Bind(lcid)
                 .Blob(fingerprint)
                 .Run();
    if (status == Status::Ok) status = transaction.Commit();
    return status;
}

Status CVolume::Open(const std::string& path) {
    Status status = connection_.Open(path, false);
    if (status == Status::Ok) status = CheckContents();
    if (status == Status::Ok) status = ReadIdentity();
    return status;
}

// A journal that is no longer used is deleted when its mode changes (SQLite's documentation of journal_mode).
void CVolume::Settle() {
    // It stays when another process has the volume open; it is empty then and in nobody's way.
    (void)connection_.Execute("PRAGMA busy_timeout=0; PRAGMA journal_mode=DELETE");
}

// The first read also undoes what a process left unfinished when it was killed; only then do the file's size
// and tables say anything.
Status CVolume::CheckContents() {
    CTransaction transaction(connection_);
    Status status = transaction.Begin(CTransaction::Kind::Read);
    if (status == Status::Ok) status = CheckSchema();
    return status == Status::Ok ? CheckSize() : status;
}

// SQLite reads a page that is cut off as if it ended in zeros, and that may look like a page with less in it.
Status CVolume::CheckSize() {
    std::int64_t size = 0;
    Status status = connection_.FileSize(&size);
    if (status != Status::Ok) return status;
    CQuery query =
        connection_.Prepare("SELECT page_count * page_size FROM pragma_page_count, pragma_page_size");
    status = query.Row();
    if (status != Status::Ok) return status;
    return size < query.Number(0) ? Status::Corrupt : Status::Ok;
}

Status CVolume::CheckSchema() {
    CQuery query =
        connection_.Prepare("SELECT name, sql FROM sqlite_schema WHERE sql IS NOT NULL ORDER BY rowid");
    Status status = Status::Ok;
    for (const SchemaRow& row : kSchema) {
        status = query.Row();
        if (status != Status::Ok) return status == Status::NotFound ? Status::Corrupt : status;
        if (query.Bytes(0) != row.name || query.Bytes(1) != row.sql) return Status::Corrupt;
    }
    status = query.Row();
    if (status == Status::Ok) return Status::Corrupt;
    return status == Status::NotFound ? Status::Ok : status;
}

Status CVolume::ReadIdentity() {
    std::uint32_t lcid = 0;
    {
        CQuery query = connection_.Prepare("SELECT lcid, collation, guid FROM volume WHERE id=1");
        const Status status = query.Row();
        if (status != Status::Ok) return status == Status::NotFound ? Status::Corrupt : status;
        lcid = static_cast<std::uint32_t>(query.Number(0));
        const std::string guid = query.Bytes(2);
        if (guid.size() != id_.size()) return Status::Corrupt;
        std::copy(guid.begin(), guid.end(), id_.begin());
        if (query.Bytes(1) == Fingerprint(collator_, lcid)) return Status::Ok;
    }
    CTransaction transaction(connection_);
    Status status = transaction.Begin(CTransaction::Kind::Write);
    if (status == Status::Ok) status = SortAnew(lcid);
    return status == Status::Ok ? transaction.Commit() : status;
}

Status CVolume::ReadLocale(std::uint32_t* lcid) {
    CQuery query = connection_.Prepare("SELECT lcid FROM volume WHERE id=1");
    const Status status = query.Row();
    if (status != Status::Ok) return status == Status::NotFound ? Status::Corrupt : status;
    *lcid = static_cast<std::uint32_t>(query.Number(0));
    return Status::Ok;
}

Status CVolume::Locale(std::uint32_t* lcid) {
    return ReadLocale(lcid);
}

Status CVolume::ChangeLocale(std::uint32_t lcid) {
    if (!collator_.Knows(lcid)) return Status::InvalidArgument;
    std::uint32_t present = 0;
    Status status = ReadLocale(&present);
    // The usual case, before every list of the application: nothing to do, and nothing is written.
    if (status != Status::Ok || present == lcid) return status;
    CTransaction transaction(connection_);
    status = transaction.Begin(CTransaction::Kind::Write);
    if (status == Status::Ok) status = SortAnew(lcid);
    return status == Status::Ok ? transaction.Commit() : status;
}

Status CVolume::SortAnew(std::uint32_t lcid) {
    Status status = connection_.Prepare("DELETE FROM keys").Run();
    std::vector<DatabaseInfo> databases;
    if (status == Status::Ok) status = ReadDatabases(&databases);
    for (const DatabaseInfo& database : databases) {
        if (status == Status::Ok) status = SortDatabaseAnew(database, lcid);
    }
    if (status != Status::Ok) return status;
    const std::string fingerprint = Fingerprint(collator_, lcid);
    return connection_.Prepare("UPDATE volume SET lcid=?, collation=? WHERE id=1")
        .Bind(lcid)
        .Blob(fingerprint)
        .Run();
}

Status CVolume::SortDatabaseAnew(const DatabaseInfo& database, std::uint32_t lcid) {
    CQuery query = connection_.Prepare("SELECT oid, properties FROM records WHERE db=?");
    query.Bind(database.oid);
    Status status = Status::Ok;
    while ((status = query.Row()) == Status::Ok) {
        Record record;
        status = DecodeRecord(query.Bytes(1), &record);
        if (status == Status::Ok) {
            status = WriteKeys(database, static_cast<Oid>(query.Number(0)), record, lcid);
        }
        if (status != Status::Ok) return status;
    }
    return status == Status::NotFound ? Status::Ok : status;
}

}  // namespace cedb
