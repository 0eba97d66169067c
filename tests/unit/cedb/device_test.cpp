// The database calls as a program on the device makes them: through COREDLL and the device's own headers.
#include <gtest/gtest.h>
#include <windows.h>

#include <cwchar>

namespace {

constexpr CEPROPID kName = 0x0066001F;
wchar_t g_volumeName[] = L"\\device.vol";
wchar_t g_databaseName[] = L"FileDB";

class DeviceDatabaseTest : public testing::Test {
  protected:
    void SetUp() override {
        SetEnvironmentVariableW(L"KORA_DEVICEROOT", _wgetenv(L"TEMP"));
        ASSERT_TRUE(CeMountDBVol(&volume_, g_volumeName, CREATE_ALWAYS | EDB_MOUNT_FLAG)) << GetLastError();
        CEDBASEINFOEX info{};
        info.wVersion = 2;
        info.dwFlags = CEDB_VALIDNAME | CEDB_VALIDSORTSPEC | CEDB_VALIDDBFLAGS;
        wcscpy(info.szDbaseName, g_databaseName);
        info.wNumSortOrder = 1;
        info.rgSortSpecs[0] = {2, 1, 0, 0, {kName}, {CEDB_SORT_UNKNOWNFIRST}};
        oid_ = CeCreateDatabaseWithProps(&volume_, &info, 0, nullptr);
        ASSERT_NE(oid_, 0U) << GetLastError();
    }
    void TearDown() override { EXPECT_TRUE(CeUnmountDBVol(&volume_)); }

    CEGUID volume_{};
    CEOID oid_ = 0;
};

}  // namespace

TEST_F(DeviceDatabaseTest, CloseHandleClosesSessionsAndDatabasesInAnyOrder) {
    const HANDLE session = CeCreateSession(&volume_);
    ASSERT_NE(session, INVALID_HANDLE_VALUE);
    const HANDLE database = CeOpenDatabaseInSession(session, &volume_, &oid_, g_databaseName, nullptr,
                                                    CEDB_AUTOINCREMENT, nullptr);
    ASSERT_NE(database, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(CloseHandle(session));
    wchar_t text[] = L"K\u00F6ln";
    CEPROPVAL value{};
    value.propid = kName;
    value.val.lpwstr = text;
    const CEOID record = CeWriteRecordProps(database, 0, 1, &value);
    EXPECT_NE(record, 0U);
    WORD count = 0;
    LPBYTE buffer = nullptr;
    DWORD size = 0;
    EXPECT_EQ(CeSeekDatabase(database, CEDB_SEEK_BEGINNING, 0, nullptr), record);
    EXPECT_EQ(CeReadRecordPropsEx(database, CEDB_ALLOWREALLOC, &count, nullptr, &buffer, &size, nullptr),
              record);
    EXPECT_STREQ(reinterpret_cast<CEPROPVAL*>(buffer)->val.lpwstr, text);
    EXPECT_EQ(LocalFree(buffer), nullptr);
    EXPECT_TRUE(CloseHandle(database));
    EXPECT_EQ(CeSeekDatabase(database, CEDB_SEEK_BEGINNING, 0, nullptr), 0U);
    SetLastError(0);
    EXPECT_FALSE(CloseHandle(database));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
}

TEST_F(DeviceDatabaseTest, AVolumeCanBeReplacedOnceItsLastHandleIsClosed) {
    const HANDLE database =
        CeOpenDatabaseInSession(nullptr, &volume_, &oid_, g_databaseName, nullptr, 0, nullptr);
    ASSERT_NE(database, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(CeUnmountDBVol(&volume_));
    CEGUID again{};
    EXPECT_FALSE(CeMountDBVol(&again, g_volumeName, CREATE_ALWAYS));
    EXPECT_TRUE(CloseHandle(database));
    EXPECT_TRUE(CeMountDBVol(&volume_, g_volumeName, CREATE_ALWAYS));
}
