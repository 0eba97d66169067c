// What the engine promises beyond the model: identifiers, several connections, languages, limits.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <optional>
#include <utility>

#include "handset/coredll/cedb/engine/cursor.h"
#include "tests/native/cedb/volume_file.h"

using namespace cedb;

namespace {

constexpr PropertyId kName = Id(0x66, kTypeText);
constexpr PropertyId kValue = Id(0x67, kTypeUInt32);

DatabaseInfo ByName() {
    DatabaseInfo info;
    info.name = u"FileDB";
    info.orders = {SortOrder{false, {{kName, kSortUnknownFirst}}}};
    return info;
}

class EngineTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(CVolume::Create(file_.Path(), 2, collator_), Status::Ok);
        ASSERT_EQ(volume_.Open(file_.Path()), Status::Ok);
        Oid oid = 0;
        ASSERT_EQ(volume_.CreateDatabase(ByName(), &oid), Status::Ok);
        ASSERT_EQ(volume_.FindDatabase(oid, &database_), Status::Ok);
    }
    Oid Insert(const std::u16string& name) {
        Oid oid = 0;
        EXPECT_EQ(volume_.InsertRecord(database_, {Set(kName, name)}, &oid), Status::Ok);
        return oid;
    }
    static Oid Next(CCursor& cursor, Status expected = Status::Ok) {
        Oid oid = 0;
        Record record;
        EXPECT_EQ(cursor.Look(&oid, &record), expected);
        cursor.HasBeenRead();
        return oid;
    }

    PlainCollator collator_;
    VolumeFile file_;
    CVolume volume_{collator_};
    DatabaseInfo database_;
};

// Counts the transactions of every connection that is opened while it lives.
class TransactionCount {
  public:
    TransactionCount() {
        count_ = 0;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(Watch));
    }
    ~TransactionCount() { sqlite3_reset_auto_extension(); }
    TransactionCount(const TransactionCount&) = delete;
    TransactionCount& operator=(const TransactionCount&) = delete;

    static int Taken() { return std::exchange(count_, 0); }

  private:
    static int Watch(sqlite3* database, const char**, const sqlite3_api_routines*) {
        return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, Note, nullptr);
    }
    static int Note(unsigned, void*, void*, void* sql) {
        count_ += std::string(static_cast<const char*>(sql)).compare(0, 5, "BEGIN") == 0 ? 1 : 0;
        return 0;
    }
    inline static int count_ = 0;
};

// A cursor of one connection, and another connection that writes meanwhile.
class TwoConnectionsTest : public EngineTest {
  protected:
    void SetUp() override {
        EngineTest::SetUp();
        ASSERT_EQ(reader_.Open(file_.Path()), Status::Ok);
    }
    std::u16string NextName(Status expected = Status::Ok) {
        Oid oid = 0;
        Record record;
        EXPECT_EQ(cursor_->Look(&oid, &record), expected);
        cursor_->HasBeenRead();
        return record.empty() ? std::u16string() : record[0].text;
    }
    Oid SeekName(const std::u16string& name) {
        Oid found = 0;
        EXPECT_EQ(cursor_->SeekTo({Seek::FirstEqual, 0, {Set(kName, name).property}}, &found, nullptr),
                  Status::Ok);
        return found;
    }
    // Names of two letters, in their order.
    static std::u16string Name(int number) {
        return {static_cast<char16_t>(u'a' + number / 20), static_cast<char16_t>(u'a' + number % 20)};
    }

    CVolume reader_{collator_};
    std::optional<CCursor> cursor_;
};

}  // namespace

TEST_F(EngineTest, ANumberIsNeverGivenOutTwiceEvenAfterTheLastRecordIsDeletedAndTheVolumeReopened) {
    const Oid first = Insert(u"a");
    ASSERT_EQ(volume_.DeleteRecord(database_, first), Status::Ok);
    CVolume again(collator_);
    ASSERT_EQ(again.Open(file_.Path()), Status::Ok);
    Oid second = 0;
    ASSERT_EQ(again.InsertRecord(database_, {Set(kName, u"b")}, &second), Status::Ok);
    EXPECT_GT(second, first);
}

TEST_F(EngineTest, DatabasesAndRecordsShareTheirNumbers) {
    const Oid record = Insert(u"a");
    DatabaseInfo other = ByName();
    other.name = u"FileIndexDB";
    Oid database = 0;
    ASSERT_EQ(volume_.CreateDatabase(other, &database), Status::Ok);
    EXPECT_NE(record, database_.oid);
    EXPECT_EQ(database, record + 1);
}

TEST_F(EngineTest, ASecondConnectionSeesEveryChangeAtOnce) {
    CVolume second(collator_);
    ASSERT_EQ(second.Open(file_.Path()), Status::Ok);
    CCursor cursor(second, database_, 0, true);
    const Oid b = Insert(u"b");
    EXPECT_EQ(Next(cursor), b);
    const Oid c = Insert(u"c");
    EXPECT_EQ(Next(cursor), c);
    EXPECT_EQ(Next(cursor, Status::EndOfData), 0U);
}

TEST_F(TwoConnectionsTest, WhatTheOtherOneChangesBetweenASeekAndTheReadIsRead) {
    const Oid a = Insert(u"a");
    cursor_.emplace(reader_, database_, 0, true);
    ASSERT_EQ(SeekName(u"a"), a);
    ASSERT_EQ(volume_.UpdateRecord(database_, a, {Set(kName, u"b")}), Status::Ok);
    EXPECT_EQ(NextName(), u"b");
    ASSERT_EQ(SeekName(u"b"), a);
    ASSERT_EQ(volume_.DeleteRecord(database_, a), Status::Ok);
    EXPECT_EQ(NextName(Status::RecordDeleted), u"");
}

TEST_F(TwoConnectionsTest, WhatTheOtherOneChangesAmongTheRecordsThatComeNextIsRead) {
    std::vector<Oid> oids;
    for (int i = 0; i < 200; ++i) oids.push_back(Insert(Name(i)));
    cursor_.emplace(reader_, database_, 0, true);
    for (int i = 0; i < 20; ++i) ASSERT_EQ(NextName(), Name(i));
    ASSERT_EQ(volume_.UpdateRecord(database_, oids[20], {Set(kName, Name(22) + u"x")}), Status::Ok);
    EXPECT_EQ(NextName(), Name(21));
    ASSERT_EQ(volume_.DeleteRecord(database_, oids[22]), Status::Ok);
    EXPECT_EQ(NextName(), Name(22) + u"x");
    Insert(Name(22) + u"y");
    EXPECT_EQ(NextName(), Name(22) + u"y");
    for (int i = 23; i < 200; ++i) ASSERT_EQ(NextName(), Name(i));
    NextName(Status::EndOfData);
}

TEST_F(TwoConnectionsTest, AVolumeThatIsSortedAnewIsReadOnInItsNewOrder) {
    for (int i = 0; i < 60; ++i) Insert(Name(i));
    cursor_.emplace(reader_, database_, 0, true);
    for (int i = 0; i < 20; ++i) ASSERT_EQ(NextName(), Name(i));
    ASSERT_EQ(volume_.ChangeLocale(1), Status::Ok);
    for (int i = 18; i >= 0; --i) ASSERT_EQ(NextName(), Name(i));
    NextName(Status::EndOfData);
}

TEST_F(EngineTest, InsideATransactionACursorReadsWhatThatHasWrittenAndAfterwardsWhatIsLeftOfIt) {
    const Oid a = Insert(u"a");
    CCursor cursor(volume_, database_, 0, false);
    const auto name = [&] {
        Oid oid = 0;
        Record record;
        EXPECT_EQ(cursor.Look(&oid, &record), Status::Ok);
        return record.empty() ? std::u16string() : record[0].text;
    };
    EXPECT_EQ(name(), u"a");
    {
        CTransaction all(volume_.Connection());
        ASSERT_EQ(all.Begin(CTransaction::Kind::Write), Status::Ok);
        ASSERT_EQ(volume_.UpdateRecord(database_, a, {Set(kName, u"b")}), Status::Ok);
        EXPECT_EQ(name(), u"b");
        Oid found = 0;
        ASSERT_EQ(cursor.SeekTo({Seek::Number, a, {}}, &found, nullptr), Status::Ok);
        EXPECT_EQ(name(), u"b");
    }
    EXPECT_EQ(name(), u"a");
}

TEST_F(TwoConnectionsTest, ALookUpIsOneTransaction) {
    const Oid b = Insert(u"b");
    Insert(u"c");
    const TransactionCount transactions;
    CVolume counted(collator_);
    ASSERT_EQ(counted.Open(file_.Path()), Status::Ok);
    cursor_.emplace(counted, database_, 0, true);
    TransactionCount::Taken();
    ASSERT_EQ(SeekName(u"b"), b);
    EXPECT_EQ(NextName(), u"b");
    EXPECT_EQ(TransactionCount::Taken(), 1);
    EXPECT_EQ(NextName(), u"c");
    EXPECT_EQ(TransactionCount::Taken(), 1);
}

TEST_F(TwoConnectionsTest, ReadingAllRecordsTakesATransactionForMany) {
    const TransactionCount transactions;
    CVolume counted(collator_);
    ASSERT_EQ(counted.Open(file_.Path()), Status::Ok);
    int stored = 0;
    for (const int records : {100, 400}) {
        for (; stored < records; ++stored) Insert(Name(stored));
        TransactionCount::Taken();
        cursor_.emplace(counted, database_, 0, true);
        for (int i = 0; i < records; ++i) ASSERT_EQ(NextName(), Name(i));
        NextName(Status::EndOfData);
        // 31 records until there are 32 at once, and the end.
        EXPECT_LE(TransactionCount::Taken(), 6 + records / 32) << records;
    }
}

TEST_F(EngineTest, NoJournalIsLeftBesideASettledVolume) {
    Insert(u"a");
    volume_.Settle();
    EXPECT_NE(access((file_.Path() + "-journal").c_str(), F_OK), 0);
}

TEST_F(EngineTest, ANewLanguageSortsTheRecordsAnewAndAnOpenCursorKeepsItsRecord) {
    const Oid a = Insert(u"a");
    const Oid b = Insert(u"b");
    const Oid c = Insert(u"c");
    CCursor cursor(volume_, database_, 0, true);
    EXPECT_EQ(Next(cursor), a);
    EXPECT_EQ(Next(cursor), b);
    ASSERT_EQ(volume_.ChangeLocale(1), Status::Ok);
    EXPECT_EQ(Next(cursor), a);
    CCursor fresh(volume_, database_, 0, true);
    EXPECT_EQ(Next(fresh), c);
    EXPECT_EQ(volume_.ChangeLocale(5000), Status::InvalidArgument);
}

TEST_F(EngineTest, AVolumeFromAHostThatSortsOtherwiseIsSortedAnewWhenItIsOpened) {
    const Oid a = Insert(u"a");
    const Oid b = Insert(u"B");
    struct Shifted : PlainCollator {
        std::string TextKey(std::uint32_t lcid, std::uint32_t flags,
                            const std::u16string& text) const override {
            return "x" + PlainCollator::TextKey(lcid + 1, flags, text);
        }
    } shifted;
    CVolume other(shifted);
    ASSERT_EQ(other.Open(file_.Path()), Status::Ok);
    CCursor cursor(other, database_, 0, true);
    SeekTarget target{Seek::FirstEqual, 0, {Set(kName, u"B").property}};
    Oid found = 0;
    EXPECT_EQ(cursor.SeekTo(target, &found, nullptr), Status::Ok);
    EXPECT_EQ(found, b);
    target = {Seek::Beginning, 0, {}};
    EXPECT_EQ(cursor.SeekTo(target, &found, nullptr), Status::Ok);
    EXPECT_EQ(found, a);
}

TEST_F(EngineTest, ReadingOnAfterARecordMovedBehindTheCursorDoesNotLeaveTheCursorsPlace) {
    const Oid a = Insert(u"a");
    const Oid b = Insert(u"b");
    CCursor cursor(volume_, database_, 0, true);
    EXPECT_EQ(Next(cursor), a);
    ASSERT_EQ(volume_.UpdateRecord(database_, a, {Set(kName, u"z")}), Status::Ok);
    EXPECT_EQ(Next(cursor), b);
    EXPECT_EQ(Next(cursor), a);
    EXPECT_EQ(Next(cursor, Status::EndOfData), 0U);
}

TEST_F(EngineTest, SeekingByValueNeedsASortOrderThatBeginsWithTheProperty) {
    Oid found = 0;
    CCursor unsorted(volume_, database_, std::nullopt, true);
    const SeekTarget name{Seek::FirstEqual, 0, {Set(kName, u"a").property}};
    EXPECT_EQ(unsorted.SeekTo(name, &found, nullptr), Status::InvalidArgument);
    CCursor sorted(volume_, database_, 0, true);
    const SeekTarget value{Seek::FirstEqual, 0, {Set(kValue, 1).property}};
    EXPECT_EQ(sorted.SeekTo(value, &found, nullptr), Status::InvalidArgument);
    const SeekTarget none{Seek::FirstEqual, 0, {}};
    EXPECT_EQ(sorted.SeekTo(none, &found, nullptr), Status::InvalidArgument);
}

TEST_F(EngineTest, ValuesThatAreTooLongAreRefusedAndNothingChanges) {
    const std::u16string longest(kMaximumProperty_bytes / 2, u'x');
    const Oid oid = Insert(longest);
    EXPECT_EQ(volume_.UpdateRecord(database_, oid, {Set(kName, longest + u"x")}), Status::TooLong);
    const auto second = Set(Id(0x70, kTypeText), longest);
    const auto third = Set(Id(0x71, kTypeText), longest);
    EXPECT_EQ(volume_.UpdateRecord(database_, oid, {second, third}), Status::TooLong);
    EXPECT_EQ(volume_.UpdateRecord(database_, oid, {Set(Id(0x72, 77), 1)}), Status::InvalidArgument);
    CCursor cursor(volume_, database_, 0, true);
    Oid found = 0;
    Record record;
    ASSERT_EQ(cursor.Look(&found, &record), Status::Ok);
    ASSERT_EQ(record.size(), 1U);
    EXPECT_EQ(record[0].text, longest);
}

TEST_F(EngineTest, WritingToADatabaseThatWasDeletedMeanwhileFails) {
    CVolume second(collator_);
    ASSERT_EQ(second.Open(file_.Path()), Status::Ok);
    ASSERT_EQ(second.DeleteDatabase(database_.oid), Status::Ok);
    Oid oid = 0;
    EXPECT_EQ(volume_.InsertRecord(database_, {Set(kName, u"a")}, &oid), Status::NotFound);
}

TEST_F(EngineTest, NamesAreTheSameInAnyLetterCase) {
    DatabaseInfo info = ByName();
    info.name = u"FILEdb";
    Oid oid = 0;
    EXPECT_EQ(volume_.CreateDatabase(info, &oid), Status::DuplicateName);
    EXPECT_EQ(volume_.FindDatabase(u"filedb", &info), Status::Ok);
    EXPECT_EQ(info.name, u"FileDB");
}

TEST_F(EngineTest, SortOrdersThatMakeNoSenseAreRefused) {
    DatabaseInfo info = ByName();
    info.name = u"other";
    Oid oid = 0;
    info.orders = {SortOrder{false, {}}};
    EXPECT_EQ(volume_.CreateDatabase(info, &oid), Status::InvalidArgument);
    info.orders = {SortOrder{false, {{Id(0x65, kTypeBlob), 0}}}};
    EXPECT_EQ(volume_.CreateDatabase(info, &oid), Status::InvalidArgument);
    info.orders = {SortOrder{false, {{kName, 0}, {kName, 1}}}};
    EXPECT_EQ(volume_.CreateDatabase(info, &oid), Status::InvalidArgument);
    info.orders.assign(kMaximumSortOrders + 1, SortOrder{false, {{kName, 0}}});
    EXPECT_EQ(volume_.CreateDatabase(info, &oid), Status::InvalidArgument);
    info.orders.resize(kMaximumSortOrders);
    EXPECT_EQ(volume_.CreateDatabase(info, &oid), Status::Ok);
}
