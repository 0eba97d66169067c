// The model of the database engine.
#include "tests/native/cedb/engine_model.h"

#include <algorithm>
#include <cstring>

using cedb::Oid;
using cedb::Property;
using cedb::Record;
using cedb::Seek;
using cedb::SortColumn;
using cedb::SortOrder;
using cedb::Status;

namespace {

template <typename T>
int Three(const T& left, const T& right) {
    return left < right ? -1 : right < left ? 1 : 0;
}

int CompareText(std::u16string left, std::u16string right, std::uint32_t flags, bool reverse) {
    if ((flags & cedb::kSortCaseInsensitive) != 0) {
        for (std::u16string* text : {&left, &right}) {
            for (char16_t& unit : *text) {
                if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + 32);
            }
        }
    }
    for (std::size_t i = 0; i < std::min(left.size(), right.size()); ++i) {
        if (left[i] != right[i]) return reverse ? Three(right[i], left[i]) : Three(left[i], right[i]);
    }
    return Three(left.size(), right.size());
}

double AsDouble(const Property& property) {
    double value = 0;
    std::memcpy(&value, &property.number, sizeof value);
    return value;
}

int CompareValues(const SortColumn& column, const Property& left, const Property& right, bool reverse) {
    switch (cedb::TypeOf(column.id)) {
        case cedb::kTypeText:
            return CompareText(left.text, right.text, column.flags, reverse);
        case cedb::kTypeDouble:
            return Three(AsDouble(left), AsDouble(right));
        case cedb::kTypeInt16:
        case cedb::kTypeInt32:
            return Three(static_cast<std::int64_t>(left.number), static_cast<std::int64_t>(right.number));
        default:
            return Three(left.number, right.number);
    }
}

int CompareColumn(const SortColumn& column, const std::optional<Property>& left,
                  const std::optional<Property>& right, bool reverse) {
    if (left.has_value() != right.has_value()) {
        const bool unknownFirst = (column.flags & cedb::kSortUnknownFirst) != 0;
        return left.has_value() == unknownFirst ? 1 : -1;
    }
    if (!left.has_value()) return 0;
    const int order = CompareValues(column, *left, *right, reverse);
    return (column.flags & cedb::kSortDescending) != 0 ? -order : order;
}

}  // namespace

int EngineModel::CompareKeys(const SortOrder& order, const ModelKey& left, const ModelKey& right) const {
    for (std::size_t i = 0; i < std::min(left.size(), right.size()); ++i) {
        if (const int result = CompareColumn(order.columns[i], left[i], right[i], lcid % 2 == 1))
            return result;
    }
    return 0;
}

ModelKey EngineModel::KeyOf(const SortOrder& order, const Record& record) {
    ModelKey key;
    for (const SortColumn& column : order.columns) {
        const Property* property = cedb::FindProperty(record, column.id);
        key.push_back(property == nullptr ? std::nullopt : std::optional<Property>(*property));
    }
    return key;
}

Status EngineModel::CreateDatabase(const cedb::DatabaseInfo& info, Oid* oid) {
    for (const auto& [number, database] : databases) {
        if (database.info.name == info.name) return Status::DuplicateName;
    }
    *oid = nextOid++;
    databases[*oid].info = info;
    databases[*oid].info.oid = *oid;
    return Status::Ok;
}

Status EngineModel::Check(const Database& database, Oid self, const Record& record) const {
    for (const SortOrder& order : database.info.orders) {
        const ModelKey key = KeyOf(order, record);
        for (std::size_t i = 0; i < key.size(); ++i) {
            const bool needed = (order.columns[i].flags & cedb::kSortNonNull) != 0;
            if (needed && !key[i].has_value()) return Status::InvalidArgument;
        }
        for (const auto& [oid, other] : database.records) {
            const bool same = oid != self && CompareKeys(order, key, KeyOf(order, other)) == 0;
            if (order.unique && same) return Status::DuplicateKey;
        }
    }
    return Status::Ok;
}

Status EngineModel::Insert(Oid database, const std::vector<cedb::PropertyChange>& changes, Oid* oid) {
    const auto found = databases.find(database);
    if (found == databases.end()) return Status::NotFound;
    Record record;
    if (const Status applied = cedb::ApplyChanges(record, changes); applied != Status::Ok) return applied;
    const Status status = Check(found->second, 0, record);
    if (status != Status::Ok) return status;
    *oid = nextOid++;
    found->second.records[*oid] = record;
    return Status::Ok;
}

Status EngineModel::Update(Oid database, Oid oid, const std::vector<cedb::PropertyChange>& changes) {
    const auto found = databases.find(database);
    if (found == databases.end() || found->second.records.count(oid) == 0) return Status::NotFound;
    Record record = found->second.records[oid];
    if (const Status applied = cedb::ApplyChanges(record, changes); applied != Status::Ok) return applied;
    const Status status = Check(found->second, oid, record);
    if (status == Status::Ok) found->second.records[oid] = record;
    return status;
}

Status EngineModel::Delete(Oid database, Oid oid) {
    const auto found = databases.find(database);
    if (found == databases.end() || found->second.records.erase(oid) == 0) return Status::NotFound;
    return Status::Ok;
}

int CursorModel::Compare(const Entry& left, const Entry& right) const {
    if (sort_) {
        const SortOrder& order = model_.databases.at(database_).info.orders[*sort_];
        if (const int result = model_.CompareKeys(order, left.key, right.key)) return result;
    }
    return Three(left.oid, right.oid);
}

std::vector<CursorModel::Entry> CursorModel::Sorted() const {
    std::vector<Entry> entries;
    const EngineModel::Database& database = model_.databases.at(database_);
    for (const auto& [oid, record] : database.records) {
        entries.push_back(
            {sort_ ? EngineModel::KeyOf(database.info.orders[*sort_], record) : ModelKey(), oid});
    }
    std::sort(entries.begin(), entries.end(),
              [this](const Entry& left, const Entry& right) { return Compare(left, right) < 0; });
    return entries;
}

void CursorModel::Follow() {
    if (place_ != Place::On || !sort_) return;
    const EngineModel::Database& database = model_.databases.at(database_);
    const auto record = database.records.find(at_.oid);
    if (record == database.records.end()) return;
    at_.key = EngineModel::KeyOf(database.info.orders[*sort_], record->second);
}

std::size_t CursorModel::Here(const std::vector<Entry>& entries) const {
    if (place_ == Place::Front) return 0;
    if (place_ == Place::End) return entries.size();
    std::size_t here = 0;
    const int behind = place_ == Place::Behind ? 1 : 0;
    while (here < entries.size() && Compare(entries[here], at_) < behind) ++here;
    return here;
}

std::optional<std::size_t> CursorModel::FindValue(const std::vector<Entry>& entries,
                                                  const cedb::SeekTarget& target) const {
    const SortOrder& order = model_.databases.at(database_).info.orders[*sort_];
    const ModelKey wanted(target.values.begin(), target.values.end());
    const auto compare = [&](std::size_t i) { return model_.CompareKeys(order, entries[i].key, wanted); };
    if (target.kind == Seek::NextEqual) {
        // The entry that the cursor stands on, or the next one to be read, is the one to step on from.
        const std::vector<Entry>& all = entries;
        std::size_t next = Here(all);
        const bool standing = place_ == Place::On && next < all.size() && all[next].oid == at_.oid;
        const bool stepsOver = place_ != Place::On || standing;
        if (stepsOver) ++next;
        if (place_ == Place::End || next >= all.size() || compare(next) != 0) return std::nullopt;
        return next;
    }
    const bool backward = target.kind == Seek::Smaller || target.kind == Seek::SmallerOrEqual;
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const int order3 = compare(i);
        const bool fits = (target.kind == Seek::FirstEqual && order3 == 0) ||
                          (target.kind == Seek::Greater && order3 > 0) ||
                          (target.kind == Seek::GreaterOrEqual && order3 >= 0) ||
                          (target.kind == Seek::Smaller && order3 < 0) ||
                          (target.kind == Seek::SmallerOrEqual && order3 <= 0);
        if (fits && (backward || !found)) found = i;
    }
    return found;
}

std::optional<std::size_t> CursorModel::Find(const std::vector<Entry>& entries,
                                             const cedb::SeekTarget& target) const {
    const auto count = static_cast<std::int64_t>(entries.size());
    std::int64_t index = -1;
    if (target.kind == Seek::Number) {
        const auto same = [&](const Entry& entry) { return entry.oid == target.number; };
        index = std::find_if(entries.begin(), entries.end(), same) - entries.begin();
    } else if (target.kind == Seek::Beginning) {
        index = target.number;
    } else if (target.kind == Seek::End) {
        index = count - 1 - target.number;
    } else if (target.kind == Seek::Current) {
        if (place_ == Place::End && target.number >= 0) return std::nullopt;
        index = static_cast<std::int64_t>(Here(entries)) + target.number;
    } else {
        return FindValue(entries, target);
    }
    return index >= 0 && index < count ? std::optional<std::size_t>(index) : std::nullopt;
}

Status CursorModel::SeekTo(const cedb::SeekTarget& target, Oid* oid, std::uint32_t* index) {
    *oid = 0;
    Follow();
    const std::vector<Entry> entries = Sorted();
    const auto found = Find(entries, target);
    if (!found) {
        place_ = Place::End;
        return Status::NotFound;
    }
    place_ = Place::On;
    at_ = entries[*found];
    *oid = at_.oid;
    *index = static_cast<std::uint32_t>(*found);
    return Status::Ok;
}

Status CursorModel::Look(Oid* oid, Record* record) {
    *oid = 0;
    if (place_ == Place::End) return Status::EndOfData;
    Follow();
    const std::vector<Entry> entries = Sorted();
    if (place_ != Place::On) {
        const std::size_t here = Here(entries);
        if (here == entries.size()) {
            place_ = Place::End;
            return Status::EndOfData;
        }
        at_ = entries[here];
        place_ = Place::On;
    }
    const auto& records = model_.databases.at(database_).records;
    if (records.count(at_.oid) == 0) return Status::RecordDeleted;
    *oid = at_.oid;
    *record = records.at(at_.oid);
    return Status::Ok;
}

void CursorModel::HasBeenRead() {
    if (autoIncrement_ && place_ == Place::On) place_ = Place::Behind;
}

void CursorModel::HasBeenDeleted(Oid oid) {
    if (autoIncrement_ && place_ == Place::On && at_.oid == oid) place_ = Place::Behind;
}
