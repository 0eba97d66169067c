// Making and opening databases; sessions.
#include "tests/unit/cedb/database_fixture.h"

namespace {

class OpenTest : public DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        volume_ = Mount();
    }
    void TearDown() override {
        Unmount(volume_);
        DatabaseTest::TearDown();
    }
    DWORD OpenError(CEOID oid, const wchar_t* name, SORTORDERSPECEX* sort, DWORD flags = 0,
                    CENOTIFYREQUEST* request = nullptr) {
        SetLastError(0);
        EXPECT_EQ(CeOpenDatabaseEx2(&volume_, &oid, Mutable(name), sort, flags, request),
                  INVALID_HANDLE_VALUE);
        return GetLastError();
    }
    DWORD CreateError(CEDBASEINFOEX info) {
        SetLastError(0);
        EXPECT_EQ(CeCreateDatabaseEx2(&volume_, &info), 0U);
        return GetLastError();
    }
    CEGUID volume_{};
};

constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;

}  // namespace

TEST_F(OpenTest, ANameThatExistsInAnyLetterCaseIsDuplicate) {
    CEDBASEINFOEX info = ChannelInfo();
    const CEOID oid = CeCreateDatabaseWithProps(&volume_, &info, 0, nullptr);
    EXPECT_NE(oid, 0U);
    EXPECT_EQ(CreateError(info), 52U);
    EXPECT_EQ(CreateError(ChannelInfo(L"filedb")), static_cast<DWORD>(ERROR_DUP_NAME));
}

TEST_F(OpenTest, DescriptionsOfPropertiesAreNotSupported) {
    CEDBASEINFOEX info = ChannelInfo();
    CEPROPSPEC description{};
    EXPECT_EQ(CeCreateDatabaseWithProps(&volume_, &info, 1, &description), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_SUPPORTED));
}

TEST_F(OpenTest, CreationPropertiesThatMakeNoSenseAreRefused) {
    CEDBASEINFOEX info = ChannelInfo();
    info.wVersion = 1;
    EXPECT_EQ(CreateError(info), kInvalid);
    info = ChannelInfo();
    info.dwFlags &= ~CEDB_VALIDNAME;
    EXPECT_EQ(CreateError(info), kInvalid);
    info = ChannelInfo(L"");
    EXPECT_EQ(CreateError(info), kInvalid);
    info = ChannelInfo();
    wmemset(info.szDbaseName, L'x', CEDB_MAXDBASENAMELEN);
    EXPECT_EQ(CreateError(info), kInvalid);
    info = ChannelInfo();
    info.wNumSortOrder = CEDB_MAXSORTORDER + 1;
    EXPECT_EQ(CreateError(info), kInvalid);
    info = ChannelInfo();
    info.rgSortSpecs[0].wVersion = 1;
    EXPECT_EQ(CreateError(info), kInvalid);
    info = ChannelInfo();
    info.rgSortSpecs[0].rgPropID[0] = 0x00650041;
    EXPECT_EQ(CreateError(info), kInvalid);
    EXPECT_EQ(CeCreateDatabaseEx2(&volume_, nullptr), 0U);
    CEGUID none{};
    info = ChannelInfo();
    EXPECT_EQ(CeCreateDatabaseEx2(&none, &info), 0U);
    EXPECT_EQ(GetLastError(), kInvalid);
}

TEST_F(OpenTest, SixteenSortOrdersAreAllowed) {
    CEDBASEINFOEX info = ChannelInfo();
    info.wNumSortOrder = CEDB_MAXSORTORDER;
    for (DWORD i = 0; i < CEDB_MAXSORTORDER; ++i) info.rgSortSpecs[i] = SortBy((0x100 + i) << 16 | CEVT_UI4);
    EXPECT_NE(CeCreateDatabaseEx2(&volume_, &info), 0U);
}

TEST_F(OpenTest, OpeningByNameTellsTheIdentifierAndOpeningByIdentifierNeedsNoName) {
    CEDBASEINFOEX info = ChannelInfo();
    const CEOID oid = CeCreateDatabaseEx2(&volume_, &info);
    CEOID found = 0;
    const HANDLE byName = CeOpenDatabaseEx2(&volume_, &found, Mutable(L"FileDB"), nullptr, 0, nullptr);
    EXPECT_EQ(found, oid);
    const HANDLE byOid = CeOpenDatabaseEx2(&volume_, &found, nullptr, &info.rgSortSpecs[2], 1, nullptr);
    EXPECT_NE(byName, INVALID_HANDLE_VALUE);
    EXPECT_NE(byOid, INVALID_HANDLE_VALUE);
    EXPECT_NE(byName, byOid);
    Close(byName);
    Close(byOid);
}

TEST_F(OpenTest, OpeningWhatIsNotThereFails) {
    EXPECT_EQ(OpenError(0, L"FileDB", nullptr), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(OpenError(77, L"FileDB", nullptr), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(OpenError(0, nullptr, nullptr), kInvalid);
    EXPECT_EQ(OpenError(0, L"", nullptr), kInvalid);
}

TEST_F(OpenTest, ASortOrderThatTheDatabaseDoesNotHaveIsRefused) {
    CEDBASEINFOEX info = ChannelInfo();
    ASSERT_NE(CeCreateDatabaseEx2(&volume_, &info), 0U);
    SORTORDERSPECEX other = SortBy(0x00700013);
    EXPECT_EQ(OpenError(0, L"FileDB", &other), kInvalid);
    other = SortBy(kName, CEDB_SORT_DESCENDING);
    EXPECT_EQ(OpenError(0, L"FileDB", &other), kInvalid);
    EXPECT_EQ(OpenError(0, L"FileDB", nullptr, 0x80), kInvalid);
    CENOTIFYREQUEST request{};
    EXPECT_EQ(OpenError(0, L"FileDB", nullptr, 0, &request), static_cast<DWORD>(ERROR_NOT_SUPPORTED));
}

TEST_F(OpenTest, AClosedHandleIsNoLongerADatabase) {
    const HANDLE database = Open(volume_, kName);
    Insert(database, L"a", 1);
    Close(database);
    SetLastError(0);
    EXPECT_EQ(CeSeekDatabase(database, CEDB_SEEK_BEGINNING, 0, nullptr), 0U);
    EXPECT_EQ(GetLastError(), kInvalid);
    EXPECT_EQ(Read(database).error, kInvalid);
    CEPROPVAL value = Number(kValue, 1);
    SetLastError(0);
    EXPECT_EQ(CeWriteRecordProps(database, 0, 1, &value), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    SetLastError(0);
    EXPECT_FALSE(CeDeleteRecord(database, 1));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    EXPECT_FALSE(CedbCloseHandle(database));
}

TEST_F(OpenTest, OtherHandlesAreNotDatabasesAndAreLeftAlone) {
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    for (const HANDLE handle : {event, HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
        EXPECT_EQ(CeSeekDatabase(handle, CEDB_SEEK_BEGINNING, 0, nullptr), 0U);
        EXPECT_EQ(GetLastError(), kInvalid);
        EXPECT_FALSE(CedbCloseHandle(handle));
    }
    EXPECT_TRUE(CloseHandle(event));
}

TEST_F(OpenTest, ASessionOpensDatabasesUntilItIsClosed) {
    CEDBASEINFOEX info = ChannelInfo();
    CEOID oid = CeCreateDatabaseEx2(&volume_, &info);
    const HANDLE session = CeCreateSession(&volume_);
    ASSERT_NE(session, INVALID_HANDLE_VALUE);
    const HANDLE database = CeOpenDatabaseInSession(session, &volume_, &oid, nullptr, nullptr, 1, nullptr);
    ASSERT_NE(database, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(CloseHandle(session));
    Insert(database, L"after the session", 1);
    Close(database);
    EXPECT_EQ(CeOpenDatabaseInSession(session, &volume_, &oid, nullptr, nullptr, 1, nullptr),
              INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    const HANDLE none = INVALID_HANDLE_VALUE;
    EXPECT_EQ(CeOpenDatabaseInSession(none, &volume_, &oid, nullptr, nullptr, 1, nullptr), none);
    CEGUID unmounted{};
    EXPECT_EQ(CeCreateSession(&unmounted), INVALID_HANDLE_VALUE);
}
