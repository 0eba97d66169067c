// Seeking, and where the cursor stands afterwards.
#include "tests/unit/cedb/database_fixture.h"

namespace {

class SeekTest : public DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        volume_ = Mount();
        database_ = Open(volume_, kName);
        // Not in the order of their names; b stands there twice.
        d_ = Insert(database_, L"d", 4);
        b_ = Insert(database_, L"b", 2);
        a_ = Insert(database_, L"a", 1);
        b2_ = Insert(database_, L"b", 22);
    }
    void TearDown() override {
        Close(database_);
        Unmount(volume_);
        DatabaseTest::TearDown();
    }
    CEOID Seek(DWORD type, DWORD_PTR value = 0) {
        SetLastError(0);
        const CEOID oid = CeSeekDatabase(database_, type, value, &index_);
        error_ = oid == 0 ? GetLastError() : 0;
        return oid;
    }
    CEOID SeekName(DWORD type, const wchar_t* name) {
        CEPROPVAL value = Text(kName, name);
        return Seek(type, reinterpret_cast<DWORD_PTR>(&value));
    }
    void ExpectAtEnd() {
        EXPECT_EQ(error_, static_cast<DWORD>(ERROR_SEEK));
        EXPECT_EQ(Read(database_).error, static_cast<DWORD>(ERROR_NO_MORE_ITEMS));
    }

    CEGUID volume_{};
    HANDLE database_ = nullptr;
    CEOID a_ = 0, b_ = 0, b2_ = 0, d_ = 0;
    DWORD index_ = 99;
    DWORD error_ = 0;
};

using Strings = std::vector<std::wstring>;

}  // namespace

TEST_F(SeekTest, ByPositionFromEitherEnd) {
    EXPECT_EQ(Seek(CEDB_SEEK_BEGINNING, 0), a_);
    EXPECT_EQ(index_, 0U);
    EXPECT_EQ(Seek(CEDB_SEEK_BEGINNING, 2), b2_);
    EXPECT_EQ(index_, 2U);
    EXPECT_EQ(Seek(CEDB_SEEK_END, 0), d_);
    EXPECT_EQ(index_, 3U);
    EXPECT_EQ(Seek(CEDB_SEEK_END, 3), a_);
    EXPECT_EQ(Seek(CEDB_SEEK_BEGINNING, 4), 0U);
    ExpectAtEnd();
    EXPECT_EQ(Seek(CEDB_SEEK_END, 4), 0U);
    ExpectAtEnd();
}

TEST_F(SeekTest, FromTheCurrentRecordBothWays) {
    EXPECT_EQ(Seek(CEDB_SEEK_BEGINNING, 1), b_);
    EXPECT_EQ(Seek(CEDB_SEEK_CURRENT, 0), b_);
    EXPECT_EQ(Seek(CEDB_SEEK_CURRENT, 2), d_);
    EXPECT_EQ(Seek(CEDB_SEEK_CURRENT, static_cast<DWORD>(-3)), a_);
    EXPECT_EQ(Seek(CEDB_SEEK_CURRENT, static_cast<DWORD>(-1)), 0U);
    ExpectAtEnd();
    EXPECT_EQ(Seek(CEDB_SEEK_CURRENT, static_cast<DWORD>(-1)), d_);
}

TEST_F(SeekTest, AfterAnAutomaticStepTheNextRecordIsTheCurrentOne) {
    EXPECT_EQ(Seek(CEDB_SEEK_BEGINNING), a_);
    EXPECT_EQ(Read(database_).oid, a_);
    EXPECT_EQ(Seek(CEDB_SEEK_CURRENT, 0), b_);
}

TEST_F(SeekTest, ByIdentifierAndReadingGoesOnInTheSortOrder) {
    EXPECT_EQ(Seek(CEDB_SEEK_CEOID, b_), b_);
    EXPECT_EQ(index_, 1U);
    EXPECT_EQ(Read(database_).oid, b_);
    EXPECT_EQ(Read(database_).oid, b2_);
    EXPECT_EQ(Seek(CEDB_SEEK_CEOID, 4711), 0U);
    ExpectAtEnd();
}

TEST_F(SeekTest, TheFirstEqualRecordIsTheOneMadeFirst) {
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUEFIRSTEQUAL, L"b"), b_);
    EXPECT_EQ(index_, 1U);
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUEFIRSTEQUAL, L"B"), 0U);
    ExpectAtEnd();
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUEFIRSTEQUAL, L"c"), 0U);
    ExpectAtEnd();
}

TEST_F(SeekTest, TheNextEqualRecordIsTheVeryNextOneOrNone) {
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUEFIRSTEQUAL, L"b"), b_);
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUENEXTEQUAL, L"b"), b2_);
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUENEXTEQUAL, L"b"), 0U);
    ExpectAtEnd();
}

TEST_F(SeekTest, SmallerAndGreaterLeaveTheEqualOnesOut) {
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUESMALLER, L"b"), a_);
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUEGREATER, L"b"), d_);
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUESMALLEROREQUAL, L"b"), b2_);
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUEGREATEROREQUAL, L"b"), b_);
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUESMALLEROREQUAL, L"c"), b2_);
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUEGREATEROREQUAL, L"c"), d_);
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUESMALLER, L"a"), 0U);
    ExpectAtEnd();
    EXPECT_EQ(SeekName(CEDB_SEEK_VALUEGREATER, L"d"), 0U);
    ExpectAtEnd();
}

TEST_F(SeekTest, WrongArgumentsAreRefusedAndTheCursorStays) {
    EXPECT_EQ(Seek(CEDB_SEEK_BEGINNING, 1), b_);
    EXPECT_EQ(Seek(0), 0U);
    EXPECT_EQ(error_, static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(Seek(CEDB_SEEK_BEGINNING | CEDB_SEEK_CEOID), 0U);
    EXPECT_EQ(error_, static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(Seek(CEDB_SEEK_VALUEFIRSTEQUAL, 0), 0U);
    EXPECT_EQ(error_, static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    CEPROPVAL other = Number(kValue, 2);
    EXPECT_EQ(Seek(CEDB_SEEK_VALUEFIRSTEQUAL, reinterpret_cast<DWORD_PTR>(&other)), 0U);
    EXPECT_EQ(error_, static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(Read(database_).oid, b_);
}

TEST_F(SeekTest, NumbersAreSoughtAsNumbers) {
    const HANDLE byValue = Open(volume_, kValue);
    CEPROPVAL value = Number(kValue, 22);
    EXPECT_EQ(
        CeSeekDatabase(byValue, CEDB_SEEK_VALUEFIRSTEQUAL, reinterpret_cast<DWORD_PTR>(&value), nullptr),
        b2_);
    EXPECT_EQ(Names(byValue), (Strings{L"a", L"b", L"d", L"b"}));
    Close(byValue);
}

TEST_F(SeekTest, ADatabaseWithoutASortOrderIsReadInTheOrderOfMaking) {
    const HANDLE unsorted = Open(volume_);
    EXPECT_EQ(Names(unsorted), (Strings{L"d", L"b", L"a", L"b"}));
    CEPROPVAL value = Text(kName, L"a");
    EXPECT_EQ(
        CeSeekDatabase(unsorted, CEDB_SEEK_VALUEFIRSTEQUAL, reinterpret_cast<DWORD_PTR>(&value), nullptr),
        0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    Close(unsorted);
}

TEST_F(SeekTest, AnEmptyDatabaseHasNoBeginning) {
    CEDBASEINFOEX info = ChannelInfo(L"Empty");
    const HANDLE empty = OpenOrder(volume_, info);
    EXPECT_EQ(CeSeekDatabase(empty, CEDB_SEEK_BEGINNING, 0, nullptr), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SEEK));
    EXPECT_EQ(Read(empty).error, static_cast<DWORD>(ERROR_NO_MORE_ITEMS));
    Close(empty);
}

TEST_F(SeekTest, SeveralColumnsAreSoughtByTheFirstOfThem) {
    CEDBASEINFOEX info = ChannelInfo(L"Two");
    info.wNumSortOrder = 1;
    info.rgSortSpecs[0].wNumProps = 2;
    info.rgSortSpecs[0].rgPropID[1] = kValue;
    info.rgSortSpecs[0].rgdwFlags[1] = CEDB_SORT_DESCENDING;
    const HANDLE two = OpenOrder(volume_, info);
    Insert(two, L"x", 1);
    const CEOID nine = Insert(two, L"x", 9);
    const CEOID five = Insert(two, L"x", 5);
    CEPROPVAL values[] = {Text(kGroup, L"g"), Number(kValue, 6)};
    const auto address = reinterpret_cast<DWORD_PTR>(values);
    EXPECT_EQ(CeSeekDatabaseEx(two, CEDB_SEEK_VALUEFIRSTEQUAL, address, 1, nullptr), nine);
    EXPECT_EQ(CeSeekDatabaseEx(two, CEDB_SEEK_VALUEGREATER, address, 2, nullptr), five);
    EXPECT_EQ(CeSeekDatabaseEx(two, CEDB_SEEK_VALUEFIRSTEQUAL, address, 2, nullptr), 0U);
    EXPECT_EQ(CeSeekDatabaseEx(two, CEDB_SEEK_VALUEFIRSTEQUAL, address, 3, nullptr), 0U);
    EXPECT_EQ(CeSeekDatabaseEx(two, CEDB_SEEK_VALUEFIRSTEQUAL, address, 0, nullptr), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    Close(two);
}
