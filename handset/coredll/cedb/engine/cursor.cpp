// Moving through the records of a database. Every step is a search in an index: the first entry behind a
// (key, number) pair, or the last one in front of it.
#include "handset/coredll/cedb/engine/cursor.h"

#include <algorithm>

namespace cedb {
namespace {

// In front of and behind every entry: keys begin with a byte of at most 2, numbers are 1 to 2^32 - 1.
constexpr std::int64_t kBehindEveryOid = std::int64_t{1} << 32;

// What is read ahead at most, and how much of it may be large.
constexpr std::size_t kMostAhead = 32;
constexpr std::size_t kMostAhead_bytes = 65536;

// Two statements each: without a sort order and with one. Parameters: ?1 database, ?2 sort order, ?3 key,
// ?4 number, ?5 entries to pass over, ?6 entries wanted.
// clang-format off
constexpr const char* kForward[2] = {
    "SELECT x'', oid FROM records WHERE db=?1 AND oid>?4 ORDER BY oid LIMIT ?6 OFFSET ?5",
    "SELECT key, oid FROM keys WHERE db=?1 AND sort=?2 AND (key, oid)>(?3, ?4) "
    "ORDER BY key, oid LIMIT ?6 OFFSET ?5"};
constexpr const char* kBackward[2] = {
    "SELECT x'', oid FROM records WHERE db=?1 AND oid<?4 ORDER BY oid DESC LIMIT ?6 OFFSET ?5",
    "SELECT key, oid FROM keys WHERE db=?1 AND sort=?2 AND (key, oid)<(?3, ?4) "
    "ORDER BY key DESC, oid DESC LIMIT ?6 OFFSET ?5"};
constexpr const char* kCountBefore[2] = {
    "SELECT count(*) FROM records WHERE db=?1 AND oid<?4",
    "SELECT count(*) FROM keys WHERE db=?1 AND sort=?2 AND (key, oid)<(?3, ?4)"};
// clang-format on

bool BeginsWith(const std::string& key, const std::string& prefix) {
    return key.compare(0, prefix.size(), prefix) == 0;
}

}  // namespace

Status CCursor::KeyOf(Oid oid, std::string* key) {
    Record record;
    const Status status = volume_.ReadRecord(database_.oid, oid, &record);
    key->clear();
    if (status != Status::Ok || !sort_) return status;
    const std::optional<std::string> made = SortKey(*Order(), record, lcid_, volume_.Sorting());
    if (!made) return Status::Corrupt;
    *key = *made;
    return Status::Ok;
}

// Brings the key up to date: the record may have been changed, or the volume may sort in another language.
// A record that is gone leaves its last key as the place.
Status CCursor::Refresh() {
    const std::uint32_t before = lcid_;
    Status status = volume_.ReadLocale(&lcid_);
    const bool known = position_.place != Place::End && position_.oid != 0;
    if (status != Status::Ok || !known || (position_.place == Place::Behind && lcid_ == before))
        return status;
    std::string key;
    status = KeyOf(static_cast<Oid>(position_.oid), &key);
    if (status == Status::Ok) position_.key = std::move(key);
    return status == Status::NotFound ? Status::Ok : status;
}

void CCursor::Bind(CQuery* query, const Position& from, std::int64_t skip, std::int64_t most) const {
    query->Bind(database_.oid)
        .Bind(static_cast<std::int64_t>(sort_.value_or(0)))
        .Blob(from.key)
        .Bind(from.oid)
        .Bind(skip)
        .Bind(most);
}

Status CCursor::Step(const char* const statements[2], const Position& from, std::int64_t skip,
                     Position* found) {
    CQuery query = volume_.Connection().Prepare(statements[sort_ ? 1 : 0]);
    Bind(&query, from, skip, 1);
    const Status status = query.Row();
    if (status == Status::Ok) *found = {Place::On, query.Bytes(0), query.Number(1)};
    return status;
}

Status CCursor::Forward(const Position& from, std::int64_t skip, Position* found) {
    return Step(kForward, from, skip, found);
}

Status CCursor::Backward(const Position& from, std::int64_t skip, Position* found) {
    return Step(kBackward, from, skip, found);
}

Status CCursor::FindNumber(std::int64_t number, Position* found) {
    if (number <= 0 || number >= kBehindEveryOid) return Status::NotFound;
    *found = {Place::On, std::string(), number};
    return KeyOf(static_cast<Oid>(number), &found->key);
}

Status CCursor::FindFromHere(std::int64_t number, Position* found) {
    const bool on = position_.place == Place::On;
    if (position_.place == Place::End) {
        if (number >= 0) return Status::NotFound;
        return Backward({Place::End, "\xFF", kBehindEveryOid}, -number - 1, found);
    }
    // In the gap behind a record, the record that is next to be read counts as the current one.
    Position from = position_;
    if (number >= 0) {
        if (on) --from.oid;
        return Forward(from, number, found);
    }
    if (!on) ++from.oid;
    return Backward(from, -number - 1, found);
}

Status CCursor::FindNextEqual(const std::string& prefix, Position* found) {
    if (position_.place == Place::End) return Status::NotFound;
    const Status status = Forward(position_, position_.place == Place::On ? 0 : 1, found);
    if (status != Status::Ok) return status;
    return BeginsWith(found->key, prefix) ? Status::Ok : Status::NotFound;
}

Status CCursor::FindByValue(const SeekTarget& target, Position* found) {
    if (!sort_) return Status::InvalidArgument;
    const auto prefix = KeyPrefix(*Order(), target.values, lcid_, volume_.Sorting());
    if (!prefix) return Status::InvalidArgument;
    const Position front{Place::Behind, *prefix, 0};
    const Position back{Place::Behind, BehindPrefix(*prefix), 0};
    if (target.kind == Seek::NextEqual) return FindNextEqual(*prefix, found);
    if (target.kind == Seek::Smaller) return Backward(front, 0, found);
    if (target.kind == Seek::SmallerOrEqual) return Backward(back, 0, found);
    if (target.kind == Seek::Greater) return Forward(back, 0, found);
    const Status status = Forward(front, 0, found);
    if (status != Status::Ok || target.kind == Seek::GreaterOrEqual) return status;
    return BeginsWith(found->key, *prefix) ? Status::Ok : Status::NotFound;
}

Status CCursor::Find(const SeekTarget& target, Position* found) {
    switch (target.kind) {
        case Seek::Number:
            return FindNumber(target.number, found);
        case Seek::Current:
            return FindFromHere(target.number, found);
        case Seek::Beginning:
            if (target.number < 0) return Status::InvalidArgument;
            return Forward({}, target.number, found);
        case Seek::End:
            if (target.number < 0) return Status::InvalidArgument;
            return Backward({Place::End, "\xFF", kBehindEveryOid}, target.number, found);
        case Seek::FirstEqual:
        case Seek::NextEqual:
        case Seek::Smaller:
        case Seek::SmallerOrEqual:
        case Seek::Greater:
        case Seek::GreaterOrEqual:
            return FindByValue(target, found);
    }
    return Status::InvalidArgument;
}

Status CCursor::CountBefore(const Position& position, std::uint32_t* count) {
    CQuery query = volume_.Connection().Prepare(kCountBefore[sort_ ? 1 : 0]);
    query.Bind(database_.oid)
        .Bind(static_cast<std::int64_t>(sort_.value_or(0)))
        .Blob(position.key)
        .Bind(position.oid);
    const Status status = query.Row();
    if (status == Status::Ok) *count = static_cast<std::uint32_t>(query.Number(0));
    return status;
}

Status CCursor::SeekTo(const SeekTarget& target, Oid* oid, std::uint32_t* index) {
    *oid = 0;
    ForgetAhead();
    const bool alone = !volume_.Connection().InTransaction();
    CTransaction transaction(volume_.Connection());
    Status status = transaction.Begin(CTransaction::Kind::Read);
    if (status == Status::Ok) status = Refresh();
    if (status != Status::Ok) return status;
    Position found;
    status = Find(target, &found);
    if (status == Status::NotFound) position_ = {Place::End, std::string(), 0};
    if (status == Status::Ok && index != nullptr) status = CountBefore(found, index);
    if (status != Status::Ok) return status;
    position_ = std::move(found);
    *oid = static_cast<Oid>(position_.oid);
    // Whoever seeks a record will read it. What is wrong with it is told when it is read.
    if (alone && volume_.Connection().ReadStamp(&stamp_) == Status::Ok) (void)Append(position_);
    batch_ = 2;
    return Status::Ok;
}

void CCursor::ForgetAhead() {
    ahead_.clear();
    batch_ = 1;
}

// What a transaction around has written is not in the file yet, so the file does not tell of it.
bool CCursor::AheadIsTrue() {
    FileStamp now;
    return !ahead_.empty() && !volume_.Connection().InTransaction() &&
           volume_.Connection().ReadStamp(&now) == Status::Ok && now == stamp_;
}

Status CCursor::Append(const Position& position) {
    Entry entry{position, std::string()};
    const Status status = volume_.ReadEncoded(database_.oid, static_cast<Oid>(position.oid), &entry.bytes);
    if (status == Status::Ok) ahead_.push_back(std::move(entry));
    return status;
}

// The record that is next to be read; the cursor then stands on it.
Status CCursor::ReadNext() {
    Status status = Status::Ok;
    if (position_.place == Place::Behind) {
        Position found;
        status = Forward(position_, 0, &found);
        if (status == Status::NotFound) {
            position_ = {Place::End, std::string(), 0};
            return Status::EndOfData;
        }
        if (status != Status::Ok) return status;
        position_ = std::move(found);
    }
    status = Append(position_);
    return status == Status::NotFound ? Status::RecordDeleted : status;
}

// What is wrong with one of them is told when its turn has come.
void CCursor::AppendMore() {
    std::size_t bytes = ahead_.front().bytes.size();
    CQuery query = volume_.Connection().Prepare(kForward[sort_ ? 1 : 0]);
    Bind(&query, position_, 0, static_cast<std::int64_t>(batch_ - 1));
    while (bytes < kMostAhead_bytes && query.Row() == Status::Ok) {
        if (Append({Place::On, query.Bytes(0), query.Number(1)}) != Status::Ok) return;
        bytes += ahead_.back().bytes.size();
    }
}

// Twice as many each time, as long as nobody changes the volume meanwhile.
Status CCursor::ReadAhead() {
    if (!ahead_.empty()) ForgetAhead();
    const bool alone = !volume_.Connection().InTransaction();
    CTransaction transaction(volume_.Connection());
    Status status = transaction.Begin(CTransaction::Kind::Read);
    if (status == Status::Ok) status = Refresh();
    if (status == Status::Ok) status = volume_.Connection().ReadStamp(&stamp_);
    if (status == Status::Ok) status = ReadNext();
    if (status != Status::Ok || !alone) return status;
    if (batch_ > 1) AppendMore();
    batch_ = std::min(2 * batch_, kMostAhead);
    return Status::Ok;
}

Status CCursor::Look(Oid* oid, Record* record) {
    *oid = 0;
    if (position_.place == Place::End) return Status::EndOfData;
    if (!AheadIsTrue()) {
        const Status status = ReadAhead();
        if (status != Status::Ok) return status;
    }
    position_ = ahead_.front().position;
    const Status status = DecodeRecord(ahead_.front().bytes, record);
    if (volume_.Connection().InTransaction()) ahead_.clear();
    if (status == Status::Ok) *oid = static_cast<Oid>(position_.oid);
    return status;
}

void CCursor::HasBeenRead() {
    if (!autoIncrement_ || position_.place != Place::On) return;
    position_.place = Place::Behind;
    if (!ahead_.empty()) ahead_.pop_front();
}

void CCursor::HasBeenDeleted(Oid oid) {
    if (!autoIncrement_ || position_.place != Place::On || position_.oid != oid) return;
    position_.place = Place::Behind;
    ForgetAhead();
}

}  // namespace cedb
