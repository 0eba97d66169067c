// The databases as the radio makes them, record by record.
#include "handset/lists/list_store.h"

#include <algorithm>

#include "handset/coredll/cedb/engine/cursor.h"

namespace lists {
namespace {

using cedb::Status;

constexpr cedb::PropertyId kListName = 0x0065001F;
constexpr cedb::PropertyId kChannelName = 0x0066001F;
constexpr cedb::PropertyId kFrequency = 0x00670013;
constexpr cedb::PropertyId kGuide = 0x0068001F;

// With the sort orders by which the radio opens them.
cedb::DatabaseInfo Layout(const char16_t* name, const std::vector<cedb::PropertyId>& sortedBy) {
    cedb::DatabaseInfo info;
    info.name = name;
    for (const cedb::PropertyId id : sortedBy)
        info.orders.push_back({false, {{id, cedb::kSortUnknownFirst}}});
    return info;
}
cedb::DatabaseInfo ListDatabase() {
    return Layout(u"FileIndexDB", {kListName});
}
cedb::DatabaseInfo ChannelDatabase() {
    return Layout(u"FileDB", {kListName, kChannelName, kFrequency, kGuide});
}

Status FindOrMake(cedb::CVolume& volume, const cedb::DatabaseInfo& layout, cedb::DatabaseInfo* database) {
    Status status = volume.FindDatabase(layout.name, database);
    if (status != Status::NotFound) return status;
    cedb::Oid oid = 0;
    status = volume.CreateDatabase(layout, &oid);
    return status == Status::Ok ? volume.FindDatabase(oid, database) : status;
}

struct StoredRecord {
    cedb::Oid oid;
    cedb::Record record;
};

// In the order in which they were made; none when there is no such database.
Status ReadRecords(cedb::CVolume& volume, const char16_t* name, std::vector<StoredRecord>* records) {
    cedb::DatabaseInfo database;
    Status status = volume.FindDatabase(name, &database);
    if (status != Status::Ok) return status == Status::NotFound ? Status::Ok : status;
    cedb::CCursor cursor(volume, database, std::nullopt, true);
    for (;;) {
        StoredRecord stored{};
        status = cursor.Look(&stored.oid, &stored.record);
        if (status == Status::EndOfData) return Status::Ok;
        if (status != Status::Ok) return status;
        cursor.HasBeenRead();
        records->push_back(std::move(stored));
    }
}

std::u16string TextOf(const cedb::Record& record, cedb::PropertyId id) {
    const cedb::Property* property = cedb::FindProperty(record, id);
    return property == nullptr ? std::u16string() : property->text;
}

cedb::PropertyChange Text(cedb::PropertyId id, const std::u16string& text) {
    cedb::PropertyChange change;
    change.property.id = id;
    change.property.text = text;
    return change;
}

cedb::PropertyChange Number(cedb::PropertyId id, std::uint32_t number) {
    cedb::PropertyChange change;
    change.property.id = id;
    change.property.number = number;
    return change;
}

Status Clear(cedb::CVolume& volume, const char16_t* name, const cedb::DatabaseInfo& database) {
    std::vector<StoredRecord> records;
    Status status = ReadRecords(volume, name, &records);
    for (const StoredRecord& record : records) {
        if (status == Status::Ok) status = volume.DeleteRecord(database, record.oid);
    }
    return status;
}

Status Write(cedb::CVolume& volume, const ImportPlan& plan, const cedb::DatabaseInfo& names,
             const cedb::DatabaseInfo& channels) {
    for (const PlannedList& planned : plan.lists) {
        const std::u16string& name = planned.list.name;
        cedb::Oid oid = 0;
        Status status = Status::Ok;
        if (planned.isNew) status = volume.InsertRecord(names, {Text(kListName, name)}, &oid);
        for (const Channel& channel : planned.list.channels) {
            if (status != Status::Ok) return status;
            status = volume.InsertRecord(
                channels,
                {Text(kListName, name), Text(kChannelName, channel.name),
                 Number(kFrequency, channel.frequency_10kHz), Text(kGuide, channel.guide)},
                &oid);
        }
        if (status != Status::Ok) return status;
    }
    return Status::Ok;
}

}  // namespace

Status ReadLists(cedb::CVolume& volume, std::vector<ChannelList>* lists, std::size_t* strays) {
    lists->clear();
    *strays = 0;
    cedb::CTransaction all(volume.Connection());
    Status status = all.Begin(cedb::CTransaction::Kind::Read);
    std::vector<StoredRecord> names, channels;
    if (status == Status::Ok) status = ReadRecords(volume, u"FileIndexDB", &names);
    if (status == Status::Ok) status = ReadRecords(volume, u"FileDB", &channels);
    if (status != Status::Ok) return status;
    const auto named = [&](const std::u16string& name) {
        return std::find_if(lists->begin(), lists->end(),
                            [&](const ChannelList& list) { return list.name == name; });
    };
    for (const StoredRecord& stored : names) {
        const std::u16string name = TextOf(stored.record, kListName);
        if (named(name) == lists->end()) lists->push_back({name, {}, 0, true});
    }
    for (const StoredRecord& stored : channels) {
        const std::u16string name = TextOf(stored.record, kListName);
        auto list = named(name);
        if (list == lists->end()) list = lists->insert(list, ChannelList{name, {}, 0, false});
        *strays += list->listed ? 0 : 1;
        const cedb::Property* frequency = cedb::FindProperty(stored.record, kFrequency);
        list->channels.push_back({TextOf(stored.record, kChannelName),
                                  frequency == nullptr ? 0 : static_cast<std::uint32_t>(frequency->number),
                                  TextOf(stored.record, kGuide), 0});
    }
    return Status::Ok;
}

Status Import(cedb::CVolume& volume, const ListFile& file, ImportMode mode, ImportPlan* plan) {
    cedb::CTransaction all(volume.Connection());
    Status status = all.Begin(cedb::CTransaction::Kind::Write);
    std::uint32_t lcid = 0;
    if (status == Status::Ok) status = volume.ReadLocale(&lcid);
    cedb::DatabaseInfo names, channels;
    if (status == Status::Ok) status = FindOrMake(volume, ListDatabase(), &names);
    if (status == Status::Ok) status = FindOrMake(volume, ChannelDatabase(), &channels);
    if (status == Status::Ok && mode == ImportMode::kReplace) status = Clear(volume, u"FileIndexDB", names);
    if (status == Status::Ok && mode == ImportMode::kReplace) status = Clear(volume, u"FileDB", channels);
    std::vector<ChannelList> stored;
    std::size_t strays = 0;
    if (status == Status::Ok) status = ReadLists(volume, &stored, &strays);
    if (status != Status::Ok) return status;
    *plan = PlanImport(stored, file, [&](const std::u16string& name) {
        // As the store would find a list by its name.
        return volume.Sorting().TextKey(lcid, 0, name);
    });
    if (plan->Empty() || (mode == ImportMode::kReplace && !plan->refused.empty())) return Status::Ok;
    status = Write(volume, *plan, names, channels);
    return status == Status::Ok ? all.Commit() : status;
}

}  // namespace lists
