// A place in a database, in one of its sort orders or in the order in which the records were made.
//
// The cursor stands on a record, in the gap behind one, or at the end. It keeps the record's key besides its
// number, so it does not lose its place when records come and go around it. Standing on a record it follows
// the record when a change of it moves it. A new cursor stands in front of the first record.
//
// What it is about to be asked for it has read already: a seek reads the record that it finds, and reading on
// reads some records at once. They are given out only while the file is as it was, so every change that was
// made before a call is seen by it.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "handset/coredll/cedb/engine/volume.h"

namespace cedb {

enum class Seek {
    Number,          // the record with this number
    Beginning,       // `number` records from the first one; 0 is the first
    End,             // `number` records back from the last one; 0 is the last
    Current,         // `number` records on, or back when negative
    FirstEqual,      // the first one whose key equals the values
    NextEqual,       // the very next one, if its key equals the values
    Smaller,         // the last one in front of all whose key equals the values
    SmallerOrEqual,  // the last one whose key equals the values, or else as Smaller
    Greater,         // the first one behind all whose key equals the values
    GreaterOrEqual,  // the first one whose key equals the values, or else as Greater
};

struct SeekTarget {
    Seek kind = Seek::Beginning;
    std::int64_t number = 0;       // Number, Beginning, End, Current
    std::vector<Property> values;  // the others: values of the first columns of the sort order
};

class CCursor {
  public:
    // `sort`: an index into the database's orders, or nothing. The volume must outlive the cursor.
    CCursor(CVolume& volume, DatabaseInfo database, std::optional<std::size_t> sort, bool autoIncrement)
        : volume_(volume), database_(std::move(database)), sort_(sort), autoIncrement_(autoIncrement) {}

    const DatabaseInfo& Database() const { return database_; }

    // NotFound leaves the cursor at the end, InvalidArgument where it was. `index`, unless null, gets the
    // number of records in front of the one found (counted: takes time in proportion).
    [[nodiscard]] Status SeekTo(const SeekTarget& target, Oid* oid, std::uint32_t* index);

    // The record that is next to be read; the cursor then stands on it. EndOfData, RecordDeleted.
    [[nodiscard]] Status Look(Oid* oid, Record* record);
    // The record under the cursor has been read: with auto-increment the cursor steps behind it.
    void HasBeenRead();
    // A record was deleted through this cursor's own handle: with auto-increment the cursor moves on.
    void HasBeenDeleted(Oid oid);

  private:
    enum class Place { On, Behind, End };
    struct Position {
        Place place = Place::Behind;
        std::string key;
        std::int64_t oid = 0;
    };
    // A record as it lies in the file, and its place.
    struct Entry {
        Position position;
        std::string bytes;
    };

    const SortOrder* Order() const { return sort_ ? &database_.orders[*sort_] : nullptr; }
    [[nodiscard]] Status KeyOf(Oid oid, std::string* key);
    [[nodiscard]] Status Refresh();
    void Bind(CQuery* query, const Position& from, std::int64_t skip, std::int64_t most) const;
    [[nodiscard]] Status Step(const char* const statements[2], const Position& from, std::int64_t skip,
                              Position* found);
    [[nodiscard]] Status Forward(const Position& from, std::int64_t skip, Position* found);
    [[nodiscard]] Status Backward(const Position& from, std::int64_t skip, Position* found);
    [[nodiscard]] Status Find(const SeekTarget& target, Position* found);
    [[nodiscard]] Status FindNumber(std::int64_t number, Position* found);
    [[nodiscard]] Status FindFromHere(std::int64_t number, Position* found);
    [[nodiscard]] Status FindByValue(const SeekTarget& target, Position* found);
    [[nodiscard]] Status FindNextEqual(const std::string& prefix, Position* found);
    [[nodiscard]] Status CountBefore(const Position& position, std::uint32_t* count);
    void ForgetAhead();
    [[nodiscard]] bool AheadIsTrue();
    [[nodiscard]] Status ReadAhead();
    [[nodiscard]] Status ReadNext();
    [[nodiscard]] Status Append(const Position& position);
    void AppendMore();

    CVolume& volume_;
    DatabaseInfo database_;
    std::optional<std::size_t> sort_;
    bool autoIncrement_;
    Position position_;
    std::uint32_t lcid_ = 0;   // the language that position_.key was made for
    std::deque<Entry> ahead_;  // what is next to be read first
    FileStamp stamp_{};        // of the file when that was read
    std::size_t batch_ = 1;    // how many are read next time
};

}  // namespace cedb
