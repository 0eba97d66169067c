// What a volume and its cursors ought to do, in the plainest form: vectors that are sorted and searched from
// end to end, and values that are compared as values.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "handset/coredll/cedb/engine/cursor.h"

// The values of one record in the columns of a sort order.
using ModelKey = std::vector<std::optional<cedb::Property>>;

class EngineModel {
  public:
    struct Database {
        cedb::DatabaseInfo info;
        std::map<cedb::Oid, cedb::Record> records;
    };

    std::map<cedb::Oid, Database> databases;
    std::uint32_t lcid = 2;
    cedb::Oid nextOid = 1;

    cedb::Status CreateDatabase(const cedb::DatabaseInfo& info, cedb::Oid* oid);
    cedb::Status Insert(cedb::Oid database, const std::vector<cedb::PropertyChange>& changes, cedb::Oid* oid);
    cedb::Status Update(cedb::Oid database, cedb::Oid oid, const std::vector<cedb::PropertyChange>& changes);
    cedb::Status Delete(cedb::Oid database, cedb::Oid oid);

    // Less than, equal to or greater than 0.
    int CompareKeys(const cedb::SortOrder& order, const ModelKey& left, const ModelKey& right) const;
    static ModelKey KeyOf(const cedb::SortOrder& order, const cedb::Record& record);

  private:
    cedb::Status Check(const Database& database, cedb::Oid self, const cedb::Record& record) const;
};

class CursorModel {
  public:
    CursorModel(EngineModel& model, cedb::Oid database, std::optional<std::size_t> sort, bool autoIncrement)
        : model_(model), database_(database), sort_(sort), autoIncrement_(autoIncrement) {}

    cedb::Oid Database() const { return database_; }
    cedb::Status SeekTo(const cedb::SeekTarget& target, cedb::Oid* oid, std::uint32_t* index);
    cedb::Status Look(cedb::Oid* oid, cedb::Record* record);
    void HasBeenRead();
    void HasBeenDeleted(cedb::Oid oid);

  private:
    enum class Place { Front, On, Behind, End };
    struct Entry {
        ModelKey key;
        cedb::Oid oid;
    };
    std::vector<Entry> Sorted() const;
    int Compare(const Entry& left, const Entry& right) const;
    // The index of the first entry that is not in front of the cursor, or of the one that it stands on.
    std::size_t Here(const std::vector<Entry>& entries) const;
    std::optional<std::size_t> Find(const std::vector<Entry>& entries, const cedb::SeekTarget& target) const;
    std::optional<std::size_t> FindValue(const std::vector<Entry>& entries,
                                         const cedb::SeekTarget& target) const;
    void Follow();

    EngineModel& model_;
    cedb::Oid database_;
    std::optional<std::size_t> sort_;
    bool autoIncrement_;
    Place place_ = Place::Front;
    Entry at_{};
};
