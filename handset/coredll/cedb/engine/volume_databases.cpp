// The databases of a volume.
#include <algorithm>

#include "handset/coredll/cedb/engine/volume.h"

namespace cedb {
namespace {

std::string NameBytes(const std::u16string& name) {
    std::string bytes;
    for (const char16_t unit : name) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

std::u16string NameFrom(const std::string& bytes) {
    std::u16string name;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        name.push_back(static_cast<char16_t>(static_cast<std::uint8_t>(bytes[i]) |
                                             static_cast<std::uint8_t>(bytes[i + 1]) << 8));
    }
    return name;
}

std::string FoldedBytes(const std::u16string& name) {
    std::u16string folded = name;
    for (char16_t& unit : folded) {
        if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit - u'A' + u'a');
    }
    return NameBytes(folded);
}

Status InfoFrom(const CQuery& query, DatabaseInfo* info) {
    info->oid = static_cast<Oid>(query.Number(0));
    info->name = NameFrom(query.Bytes(1));
    info->type = static_cast<std::uint32_t>(query.Number(2));
    info->flags = static_cast<std::uint32_t>(query.Number(3));
    return DecodeOrders(query.Bytes(4), &info->orders);
}

bool IsValid(const DatabaseInfo& info) {
    return !info.name.empty() && info.name.size() <= kMaximumDatabaseName &&
           info.name.find(u'\0') == std::u16string::npos && info.orders.size() <= kMaximumSortOrders &&
           std::all_of(info.orders.begin(), info.orders.end(),
                       [](const SortOrder& order) { return IsValid(order); });
}

}  // namespace

Status CVolume::TakeOid(Oid* oid) {
    CQuery query = connection_.Prepare("UPDATE volume SET next_oid=next_oid+1 WHERE id=1 RETURNING next_oid");
    Status status = query.Row();
    if (status != Status::Ok) return status == Status::NotFound ? Status::Corrupt : status;
    const std::int64_t next = query.Number(0);
    if (next - 1 > 0xFFFFFFFF) return Status::Full;
    *oid = static_cast<Oid>(next - 1);
    // The row is written once the statement has come to its end.
    status = query.Row();
    return status == Status::NotFound ? Status::Ok : status;
}

Status CVolume::CreateDatabase(const DatabaseInfo& info, Oid* oid) {
    if (!IsValid(info)) return Status::InvalidArgument;
    CTransaction transaction(connection_);
    Status status = transaction.Begin(CTransaction::Kind::Write);
    if (status != Status::Ok) return status;
    DatabaseInfo existing;
    status = FindDatabase(info.name, &existing);
    if (status == Status::Ok) return Status::DuplicateName;
    if (status != Status::NotFound) return status;
    status = TakeOid(oid);
    if (status != Status::Ok) return status;
    const std::string name = NameBytes(info.name);
    const std::string folded = FoldedBytes(info.name);
    const std::string orders = EncodeOrders(info.orders);
    status = connection_.Prepare("INSERT INTO databases VALUES (?, ?, ?, ?, ?, ?)")
                 .Bind(*oid)
                 .Blob(name)
                 .Blob(folded)
                 .Bind(info.type)
                 .Bind(info.flags)
                 .Blob(orders)
                 .Run();
    return status == Status::Ok ? transaction.Commit() : status;
}

Status CVolume::FindDatabase(const std::u16string& name, DatabaseInfo* info) {
    const std::string folded = FoldedBytes(name);
    CQuery query = connection_.Prepare("SELECT oid, name, type, flags, orders FROM databases WHERE folded=?");
    const Status status = query.Blob(folded).Row();
    return status == Status::Ok ? InfoFrom(query, info) : status;
}

Status CVolume::FindDatabase(Oid oid, DatabaseInfo* info) {
    CQuery query = connection_.Prepare("SELECT oid, name, type, flags, orders FROM databases WHERE oid=?");
    const Status status = query.Bind(oid).Row();
    return status == Status::Ok ? InfoFrom(query, info) : status;
}

Status CVolume::ReadDatabases(std::vector<DatabaseInfo>* databases) {
    databases->clear();
    CQuery query = connection_.Prepare("SELECT oid, name, type, flags, orders FROM databases ORDER BY oid");
    Status status = Status::Ok;
    while ((status = query.Row()) == Status::Ok) {
        databases->emplace_back();
        status = InfoFrom(query, &databases->back());
        if (status != Status::Ok) return status;
    }
    return status == Status::NotFound ? Status::Ok : status;
}

Status CVolume::ListDatabases(std::vector<DatabaseInfo>* databases) {
    CTransaction transaction(connection_);
    const Status status = transaction.Begin(CTransaction::Kind::Read);
    return status == Status::Ok ? ReadDatabases(databases) : status;
}

Status CVolume::DeleteDatabase(Oid oid) {
    CTransaction transaction(connection_);
    Status status = transaction.Begin(CTransaction::Kind::Write);
    DatabaseInfo info;
    if (status == Status::Ok) status = FindDatabase(oid, &info);
    for (const char* sql : {"DELETE FROM keys WHERE db=?", "DELETE FROM records WHERE db=?",
                            "DELETE FROM databases WHERE oid=?"}) {
        if (status == Status::Ok) status = connection_.Prepare(sql).Bind(oid).Run();
    }
    return status == Status::Ok ? transaction.Commit() : status;
}

Status CVolume::CountRecords(Oid database, std::uint32_t* count) {
    CQuery query = connection_.Prepare("SELECT count(*) FROM records WHERE db=?");
    const Status status = query.Bind(database).Row();
    *count = status == Status::Ok ? static_cast<std::uint32_t>(query.Number(0)) : 0;
    return status;
}

}  // namespace cedb
