// The volume and its two databases: created on demand, opened by a sort order, and what the trace says.
#include "shell/owned.h"
#include "tests/unit/channels/channels_test.h"

namespace {

using test::Record;
using test::TraceOf;

class ChannelVolume : public test::ChannelsTest {
  protected:
    CEGUID MountHere() {
        CEGUID guid = {};
        CeMountDBVol(&guid, const_cast<LPWSTR>(L"KORA.vol"), EDB_MOUNT_FLAG | OPEN_ALWAYS);
        return guid;
    }
    static bool HasDatabase(CEGUID guid, const wchar_t* name) {
        CEOID oid = 0;
        const HANDLE open = CeOpenDatabaseEx2(&guid, &oid, const_cast<LPWSTR>(name), nullptr, 0, nullptr);
        if (open == INVALID_HANDLE_VALUE) return false;
        CloseHandle(open);
        return true;
    }
};

TEST_F(ChannelVolume, AMissingVolumeIsCreatedEmptyByTheFirstOperation) {
    TraceOf([&] { EXPECT_EQ(db.CEDB_FindGroup(L"Mine"), 0u); });
    EXPECT_NE(GetFileAttributesW(L"\\KORA.vol"), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(Groups().empty());
    EXPECT_TRUE(Channels().empty());
}

TEST_F(ChannelVolume, AMissingChannelDatabaseIsCreatedAndTheTraceSaysSo) {
    PropRecord record = {};
    EXPECT_EQ(TraceOf([&] { db.CEDB_ReadRecord(0, &record); }),
              "Database created: FileDB\n"
              "[CEDB_OpenDB]OK: opened database: FileDB\n");
}

TEST_F(ChannelVolume, AnExistingChannelDatabaseIsNamedAsAnErrorAndOpened) {
    PropRecord record = {};
    TraceOf([&] { db.CEDB_ReadRecord(0, &record); });
    EXPECT_EQ(TraceOf([&] { db.CEDB_ReadRecord(0, &record); }),
              "[CEDB_OpenDB]ERROR: Name already exists!: FileDB\n"
              "[CEDB_OpenDB]OK: opened database: FileDB\n");
}

TEST_F(ChannelVolume, TheGroupDatabaseSaysTheSameWithoutThePrefix) {
    EXPECT_EQ(TraceOf([&] { db.CEDB_AddGroup(L"Mine"); }),
              "Database created: FileIndexDB\n"
              "OK: opened database: FileIndexDB\n");
    EXPECT_EQ(TraceOf([&] { db.CEDB_AddGroup(L"Yours"); }),
              "ERROR: Name already exists!: FileIndexDB\n"
              "OK: opened database: FileIndexDB\n");
}

TEST_F(ChannelVolume, TheChannelDatabaseHasASortOrderOnEachOfItsFourProperties) {
    Put(L"Mine", L"One", 9850);
    CEGUID guid = MountHere();
    for (const CEPROPID property :
         {kPropGroupName, kPropChannelName, kPropChannelValue, kPropChannelPGuide}) {
        SORTORDERSPECEX order = {};
        order.wVersion = 2;
        order.wNumProps = 1;
        order.rgPropID[0] = property;
        order.rgdwFlags[0] = CEDB_SORT_UNKNOWNFIRST;
        CEOID oid = 0;
        const HANDLE open =
            CeOpenDatabaseEx2(&guid, &oid, const_cast<LPWSTR>(kChannelDatabase), &order, 0, nullptr);
        EXPECT_NE(open, INVALID_HANDLE_VALUE) << std::hex << property;
        CloseHandle(open);
    }
    EXPECT_TRUE(CeUnmountDBVol(&guid));
}

TEST_F(ChannelVolume, OpeningByASortOrderNeverCreatesADatabase) {
    // An operation that ends without closing leaves the store's volume mounted, and here without a database.
    const auto mount = [this] {
        TraceOf([&] { EXPECT_EQ(db.CEDB_LoadGroups(kGroupDatabase), 0); });
        EXPECT_TRUE(VolumeIsMounted());
    };
    mount();
    EXPECT_EQ(db.CEDB_OpenByGroup(kChannelDatabase), INVALID_HANDLE_VALUE);
    EXPECT_EQ(db.CEDB_OpenByName(kChannelDatabase), INVALID_HANDLE_VALUE);
    EXPECT_EQ(db.CEDB_OpenByValue(kChannelDatabase), INVALID_HANDLE_VALUE);
    const CEGUID guid = MountHere();
    EXPECT_FALSE(HasDatabase(guid, kChannelDatabase));
    EXPECT_FALSE(HasDatabase(guid, kGroupDatabase));
    CEGUID mounted = guid;
    EXPECT_TRUE(CeUnmountDBVol(&mounted));
    EXPECT_TRUE(db.CEDB_Close());
    // The same calls open what is there.
    Put(L"Mine", L"One", 9850);
    mount();
    EXPECT_NE(db.CEDB_OpenByName(kChannelDatabase), INVALID_HANDLE_VALUE);
    EXPECT_TRUE(db.CEDB_Close());
}

TEST_F(ChannelVolume, ASeekInADatabaseThatIsMissingFails) {
    WCHAR name[kChannelTextCapacity] = L"as it was";
    EXPECT_EQ(db.CEDB_FindChannelName(L"Mine", 9850, name), 0);
    EXPECT_STREQ(name, L"as it was");
    EXPECT_TRUE(db.CEDB_Close());
}

TEST_F(ChannelVolume, AFailedDeletionLeavesTheVolumeMounted) {
    TraceOf([&] { db.CEDB_FindGroup(L"Mine"); });  // makes the volume
    SetEnvironmentVariableW(L"KORA_FAULT", L"database-write");
    TraceOf([&] { EXPECT_FALSE(db.CEDB_DeleteRecord(1)); });
    SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
    EXPECT_TRUE(VolumeIsMounted());
    EXPECT_TRUE(db.CEDB_Close());
}

// What is closed still counts as open: the step goes on and its write fails.
TEST_F(ChannelVolume, ClosedHandlesKeepTheirStaleValues) {
    TraceOf([&] { EXPECT_NE(db.CEDB_AddGroup(L"Mine"), 0u); });
    RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Quillon\\Kora\\My Favorite\\A", 0, nullptr, 0,
                    KEY_ALL_ACCESS, nullptr, OwnedKey().put(), nullptr);
    EXPECT_THAT(TraceOf([&] { EXPECT_EQ(db.CEDB_ImportGroups(), 0); }),
                testing::StartsWith("CeWriteRecordProps failed error ["));
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Quillon");
}

TEST_F(ChannelVolume, AFrequencyIsStoredAsANumber) {
    TraceOf([&] { EXPECT_NE(db.CEDB_InsertRecord(Record(L"Mine", L"High", 10795)), 0u); });
    ASSERT_EQ(Channels().size(), 1u);
    EXPECT_EQ(Channels()[0].value, 10795u);
}

TEST_F(ChannelVolume, AVolumeThatIsNoneIsReportedAndLeftAsItWas) {
    SpoilVolume();
    const std::string before = VolumeBytes();
    BOOL deleted = TRUE;
    const std::string trace = TraceOf([&] { deleted = db.CEDB_DeleteRecord(5); });
    EXPECT_FALSE(deleted);
    EXPECT_THAT(trace, testing::StartsWith("[CEDB_MountVol]ERROR: could not lcreate: volume\n"
                                           "CEDB_MountVol Failed....\r\n"
                                           "[CEDB_OpenDB]ERROR: Failed creating database FileDB - error = "));
    EXPECT_THAT(trace,
                testing::HasSubstr(
                    "\n[CEDB_OpenDB]ERROR: could not open the created database!: FileDB GetLastError(): 0x"));
    EXPECT_EQ(VolumeBytes(), before);
}

TEST_F(ChannelVolume, AGroupDatabaseThatCannotBeMadeIsReportedInItsOwnWords) {
    SpoilVolume();
    CEOID added = 1;
    const std::string trace = TraceOf([&] { added = db.CEDB_AddGroup(L"Mine"); });
    EXPECT_EQ(added, 0u);
    EXPECT_THAT(trace,
                testing::HasSubstr("CEDB_MountVol Failed....\r\nERROR: Failed creating database FileIndexDB"
                                   " - error = "));
    EXPECT_THAT(trace, testing::HasSubstr(
                           "\nERROR: could not open the created database!: FileIndexDB GetLastError(): 0x"));
    EXPECT_THAT(trace, testing::EndsWith("CEDB_OpenIndexDB Failed....\r\n"));
}

// Which operations say a failed mount twice.
TEST_F(ChannelVolume, TheOperationsThatChangeOrReadARecordSayAFailedMountTwice) {
    SpoilVolume();
    const std::string twice = "CEDB_MountVol Failed....\r\n";
    PropRecord record = Record(L"Mine", L"One", 9850);
    WCHAR name[kChannelTextCapacity] = L"";
    CEOID oid = 0;
    EXPECT_THAT(TraceOf([&] { db.CEDB_ReadRecord(1, &record); }), testing::HasSubstr(twice));
    EXPECT_THAT(TraceOf([&] { db.CEDB_DeleteRecord(1); }), testing::HasSubstr(twice));
    EXPECT_THAT(TraceOf([&] { db.CEDB_DeleteGroup(kEmptyGroup, L"Mine"); }), testing::HasSubstr(twice));
    EXPECT_THAT(TraceOf([&] { db.CEDB_AddGroup(L"Mine"); }), testing::HasSubstr(twice));
    EXPECT_EQ(TraceOf([&] { db.CEDB_FindChannelName(L"Mine", 9850, name); }),
              "[CEDB_MountVol]ERROR: could not lcreate: volume\n");
    EXPECT_EQ(TraceOf([&] { db.CEDB_FindDuplicate(record, &oid); }),
              "[CEDB_MountVol]ERROR: could not lcreate: volume\n");
    EXPECT_THAT(TraceOf([&] { db.CEDB_InsertRecord(record); }), testing::Not(testing::HasSubstr(twice)));
    EXPECT_THAT(TraceOf([&] { db.CEDB_UpdateRecord(1, record); }), testing::Not(testing::HasSubstr(twice)));
}

}  // namespace
