// The records of a volume and their sort keys.
#include <optional>

#include "handset/coredll/cedb/engine/volume.h"

namespace cedb {
namespace {

// Gives a statement the first three columns of the keys, in their order.
CQuery& BindKey(CQuery&& query, Oid database, std::size_t sort, const std::string& key) {
    return query.Bind(database).Bind(static_cast<std::int64_t>(sort)).Blob(key);
}

}  // namespace

Status CVolume::ReadEncoded(Oid database, Oid oid, std::string* bytes) {
    CQuery query = connection_.Prepare("SELECT properties FROM records WHERE db=? AND oid=?");
    const Status status = query.Bind(database).Bind(oid).Row();
    if (status == Status::Ok) *bytes = query.Bytes(0);
    return status;
}

Status CVolume::ReadRecord(Oid database, Oid oid, Record* record) {
    std::string bytes;
    const Status status = ReadEncoded(database, oid, &bytes);
    return status == Status::Ok ? DecodeRecord(bytes, record) : status;
}

Status CVolume::WriteKeys(const DatabaseInfo& database, Oid oid, const Record& record, std::uint32_t lcid) {
    for (std::size_t sort = 0; sort < database.orders.size(); ++sort) {
        const SortOrder& order = database.orders[sort];
        const std::optional<std::string> key = SortKey(order, record, lcid, collator_);
        if (!key) return Status::InvalidArgument;
        if (order.unique) {
            const Status taken =
                BindKey(connection_.Prepare("SELECT 1 FROM keys WHERE db=? AND sort=? AND key=?"),
                        database.oid, sort, *key)
                    .Row();
            if (taken == Status::Ok) return Status::DuplicateKey;
            if (taken != Status::NotFound) return taken;
        }
        const Status status =
            BindKey(connection_.Prepare("INSERT INTO keys VALUES (?, ?, ?, ?)"), database.oid, sort, *key)
                .Bind(oid)
                .Run();
        if (status != Status::Ok) return status;
    }
    return Status::Ok;
}

Status CVolume::RemoveKeys(const DatabaseInfo& database, Oid oid, const Record& record, std::uint32_t lcid) {
    for (std::size_t sort = 0; sort < database.orders.size(); ++sort) {
        const std::optional<std::string> key = SortKey(database.orders[sort], record, lcid, collator_);
        if (!key) return Status::Corrupt;
        const Status status =
            BindKey(connection_.Prepare("DELETE FROM keys WHERE db=? AND sort=? AND key=? AND oid=?"),
                    database.oid, sort, *key)
                .Bind(oid)
                .Run();
        if (status != Status::Ok) return status;
    }
    return Status::Ok;
}

Status CVolume::InsertRecord(const DatabaseInfo& database, const std::vector<PropertyChange>& changes,
                             Oid* oid) {
    Record record;
    Status status = ApplyChanges(record, changes);
    if (status != Status::Ok) return status;
    CTransaction transaction(connection_);
    status = transaction.Begin(CTransaction::Kind::Write);
    std::uint32_t lcid = 0;
    if (status == Status::Ok) status = ReadLocale(&lcid);
    // The database may have been deleted by another process since it was opened.
    DatabaseInfo present;
    if (status == Status::Ok) status = FindDatabase(database.oid, &present);
    if (status == Status::Ok) status = TakeOid(oid);
    if (status != Status::Ok) return status;
    const std::string properties = EncodeRecord(record);
    status = connection_.Prepare("INSERT INTO records VALUES (?, ?, ?)")
                 .Bind(database.oid)
                 .Bind(*oid)
                 .Blob(properties)
                 .Run();
    if (status == Status::Ok) status = WriteKeys(database, *oid, record, lcid);
    return status == Status::Ok ? transaction.Commit() : status;
}

Status CVolume::UpdateRecord(const DatabaseInfo& database, Oid oid,
                             const std::vector<PropertyChange>& changes) {
    CTransaction transaction(connection_);
    Status status = transaction.Begin(CTransaction::Kind::Write);
    std::uint32_t lcid = 0;
    if (status == Status::Ok) status = ReadLocale(&lcid);
    Record before;
    if (status == Status::Ok) status = ReadRecord(database.oid, oid, &before);
    if (status != Status::Ok) return status;
    Record after = before;
    status = ApplyChanges(after, changes);
    if (status == Status::Ok) status = RemoveKeys(database, oid, before, lcid);
    if (status == Status::Ok) status = WriteKeys(database, oid, after, lcid);
    if (status != Status::Ok) return status;
    const std::string properties = EncodeRecord(after);
    status = connection_.Prepare("UPDATE records SET properties=? WHERE db=? AND oid=?")
                 .Blob(properties)
                 .Bind(database.oid)
                 .Bind(oid)
                 .Run();
    return status == Status::Ok ? transaction.Commit() : status;
}

Status CVolume::DeleteRecord(const DatabaseInfo& database, Oid oid) {
    CTransaction transaction(connection_);
    Status status = transaction.Begin(CTransaction::Kind::Write);
    std::uint32_t lcid = 0;
    if (status == Status::Ok) status = ReadLocale(&lcid);
    Record record;
    if (status == Status::Ok) status = ReadRecord(database.oid, oid, &record);
    if (status == Status::Ok) status = RemoveKeys(database, oid, record, lcid);
    if (status != Status::Ok) return status;
    status =
        connection_.Prepare("DELETE FROM records WHERE db=? AND oid=?").Bind(database.oid).Bind(oid).Run();
    return status == Status::Ok ? transaction.Commit() : status;
}

}  // namespace cedb
