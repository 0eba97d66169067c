// Writing and deleting, and what becomes of cursors meanwhile.
#include <thread>

#include "tests/unit/cedb/database_fixture.h"

namespace {

class WriteTest : public DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        volume_ = Mount();
        database_ = Open(volume_, kName);
    }
    void TearDown() override {
        Close(database_);
        Unmount(volume_);
        DatabaseTest::TearDown();
    }
    static CEOID Write(HANDLE database, CEOID oid, CEPROPVAL value) {
        SetLastError(0);
        return CeWriteRecordProps(database, oid, 1, &value);
    }
    CEGUID volume_{};
    HANDLE database_ = nullptr;
};

using Strings = std::vector<std::wstring>;
constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;

}  // namespace

TEST_F(WriteTest, AWriteChangesWhatItNamesAndLeavesTheRest) {
    const CEOID oid = Insert(database_, L"a", 8750);
    EXPECT_EQ(Write(database_, oid, Text(kName, L"z")), oid);
    const ReadBack record = Read(database_);
    EXPECT_EQ(record.name, L"z");
    EXPECT_EQ(record.value, 8750U);
    EXPECT_EQ(record.count, 4);
}

TEST_F(WriteTest, APropertyIsTakenAwayByItsFlag) {
    const CEOID oid = Insert(database_, L"a", 8750);
    CEPROPVAL value{};
    value.propid = kName;
    value.wFlags = CEDB_PROPDELETE;
    EXPECT_EQ(Write(database_, oid, value), oid);
    EXPECT_EQ(Read(database_).count, 3);
}

TEST_F(WriteTest, WrongWritesAreRefusedAndChangeNothing) {
    const CEOID oid = Insert(database_, L"a", 1);
    EXPECT_EQ(Write(database_, oid + 100, Number(kValue, 2)), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_FOUND));
    EXPECT_EQ(Write(database_, oid, Text(kName, nullptr)), 0U);
    EXPECT_EQ(GetLastError(), kInvalid);
    EXPECT_EQ(Write(database_, oid, Number(0x0067004D, 2)), 0U);
    EXPECT_EQ(GetLastError(), kInvalid);
    EXPECT_EQ(CeWriteRecordProps(database_, oid, 0, nullptr), 0U);
    EXPECT_EQ(GetLastError(), kInvalid);
    EXPECT_EQ(Write(database_, oid, Text(kName, std::wstring(40000, L'x').c_str())), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BAD_LENGTH));
    EXPECT_EQ(Names(database_), Strings{L"a"});
}

TEST_F(WriteTest, DeletingWhatIsNotThereFails) {
    const CEOID oid = Insert(database_, L"a", 1);
    EXPECT_TRUE(CeDeleteRecord(database_, oid));
    for (const CEOID gone : {oid, CEOID{0}, CEOID{999}}) {
        SetLastError(0);
        EXPECT_FALSE(CeDeleteRecord(database_, gone));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_FOUND));
    }
}

TEST_F(WriteTest, SeekAndDeleteUntilNothingIsFoundEmptiesAGroup) {
    for (int i = 0; i < 30; ++i) Insert(database_, L"x", static_cast<DWORD>(i));
    const HANDLE byGroup = Open(volume_, kGroup);
    CEPROPVAL group = Text(kGroup, L"g");
    int deleted = 0;
    while (const CEOID oid = CeSeekDatabase(byGroup, CEDB_SEEK_VALUEFIRSTEQUAL,
                                            reinterpret_cast<DWORD_PTR>(&group), nullptr)) {
        ASSERT_TRUE(CeDeleteRecord(byGroup, oid));
        ++deleted;
    }
    EXPECT_EQ(deleted, 30);
    Close(byGroup);
}

TEST_F(WriteTest, RewritingEveryRecordWhileReadingOnEndsAtTheEndOfTheDatabase) {
    const wchar_t* const kGroups[] = {L"m", L"m", L"t", L"z", L"a"};
    for (const wchar_t* group : kGroups) {
        CEPROPVAL values[] = {Text(kGroup, group), Text(kName, group)};
        ASSERT_NE(CeWriteRecordProps(database_, 0, 2, values), 0U);
    }
    for (const wchar_t* renamed : {L"w", L"b", L"zz"}) {
        const HANDLE byGroup = Open(volume_, kGroup);
        CEPROPVAL old = Text(kGroup, renamed[0] == L'w' ? L"m" : renamed[0] == L'b' ? L"w" : L"b");
        ASSERT_NE(
            CeSeekDatabase(byGroup, CEDB_SEEK_VALUEFIRSTEQUAL, reinterpret_cast<DWORD_PTR>(&old), nullptr),
            0U);
        int reads = 0;
        for (ReadBack record = Read(byGroup); record.oid != 0; record = Read(byGroup)) {
            ASSERT_LT(++reads, 20);
            EXPECT_EQ(Write(byGroup, record.oid, Text(kGroup, renamed)), record.oid);
        }
        CEPROPVAL fresh = Text(kGroup, renamed);
        DWORD index = 0;
        EXPECT_NE(
            CeSeekDatabase(byGroup, CEDB_SEEK_VALUEFIRSTEQUAL, reinterpret_cast<DWORD_PTR>(&fresh), &index),
            0U);
        EXPECT_EQ(index, 1U);
        Close(byGroup);
    }
}

TEST_F(WriteTest, DeletingTheCurrentRecordMovesAnAutoIncrementCursorOn) {
    const CEOID a = Insert(database_, L"a", 1);
    const CEOID b = Insert(database_, L"b", 1);
    EXPECT_EQ(CeSeekDatabase(database_, CEDB_SEEK_CEOID, a, nullptr), a);
    EXPECT_TRUE(CeDeleteRecord(database_, a));
    EXPECT_EQ(Read(database_).oid, b);
}

TEST_F(WriteTest, DeletingTheCurrentRecordMakesAStayingCursorFail) {
    const CEOID a = Insert(database_, L"a", 1);
    const CEOID b = Insert(database_, L"b", 1);
    const HANDLE staying = Open(volume_, kName, 0);
    EXPECT_EQ(CeSeekDatabase(staying, CEDB_SEEK_CEOID, a, nullptr), a);
    EXPECT_TRUE(CeDeleteRecord(staying, a));
    EXPECT_EQ(Read(staying).error, static_cast<DWORD>(ERROR_KEY_DELETED));
    EXPECT_EQ(CeSeekDatabase(staying, CEDB_SEEK_CURRENT, 0, nullptr), b);
    Close(staying);
}

TEST_F(WriteTest, ARecordDeletedThroughAnotherHandleIsToldOnlyToWhoStandsOnIt) {
    const CEOID a = Insert(database_, L"a", 1);
    const CEOID b = Insert(database_, L"b", 1);
    const CEOID c = Insert(database_, L"c", 1);
    const HANDLE other = Open(volume_, kName);
    EXPECT_EQ(CeSeekDatabase(database_, CEDB_SEEK_BEGINNING, 0, nullptr), a);
    EXPECT_EQ(Read(database_).oid, a);
    EXPECT_TRUE(CeDeleteRecord(other, b));
    EXPECT_EQ(Read(database_).oid, c);
    EXPECT_EQ(CeSeekDatabase(database_, CEDB_SEEK_CEOID, a, nullptr), a);
    EXPECT_TRUE(CeDeleteRecord(other, a));
    EXPECT_EQ(Read(database_).error, static_cast<DWORD>(ERROR_KEY_DELETED));
    Close(other);
}

TEST_F(WriteTest, IdentifiersAreNeverUsedTwiceEvenAcrossMounts) {
    const CEOID first = Insert(database_, L"a", 1);
    EXPECT_TRUE(CeDeleteRecord(database_, first));
    Close(database_);
    Unmount(volume_);
    volume_ = Mount();
    database_ = Open(volume_, kName);
    EXPECT_GT(Insert(database_, L"b", 1), first);
}

TEST_F(WriteTest, AUniqueOrderRefusesASecondEqualKey) {
    CEDBASEINFOEX info = ChannelInfo(L"Unique");
    info.rgSortSpecs[0] = SortBy(kValue, CEDB_SORT_NONNULL);
    info.rgSortSpecs[0].wKeyFlags = CEDB_SORT_UNIQUE;
    info.wNumSortOrder = 1;
    const HANDLE unique = OpenOrder(volume_, info);
    const CEOID one = Write(unique, 0, Number(kValue, 1));
    EXPECT_NE(one, 0U);
    EXPECT_EQ(Write(unique, 0, Number(kValue, 1)), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
    EXPECT_EQ(Write(unique, one, Number(kValue, 1)), one);
    EXPECT_EQ(Write(unique, 0, Text(kName, L"no value")), 0U);
    EXPECT_EQ(GetLastError(), kInvalid);
    Close(unique);
}

TEST_F(WriteTest, ManyThreadsWriteAtOnceAndNothingIsLost) {
    constexpr int kThreads = 4;
    constexpr int kRecords = 25;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([this, thread] {
            CEGUID volume = Mount();
            const HANDLE database = Open(volume, kValue);
            for (int i = 0; i < kRecords; ++i) {
                Insert(database, std::to_wstring(thread).c_str(), static_cast<DWORD>(i));
                EXPECT_NE(CeSeekDatabase(database, CEDB_SEEK_BEGINNING, 0, nullptr), 0U);
                EXPECT_NE(Read(database).oid, 0U);
            }
            Close(database);
            Unmount(volume);
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(Names(database_).size(), static_cast<std::size_t>(kThreads * kRecords));
}
