// Mounting: flags, counts, files that are no volumes, faults.
#include "tests/unit/cedb/database_fixture.h"

namespace {

class VolumeTest : public DatabaseTest {
  protected:
    void ExpectMountFails(DWORD flags, DWORD error, const wchar_t* name = kVolume) {
        CEGUID volume{};
        SetLastError(0);
        EXPECT_FALSE(CeMountDBVol(&volume, Mutable(name), flags));
        EXPECT_EQ(GetLastError(), error);
        EXPECT_TRUE(CHECK_INVALIDGUID(&volume));
    }
    void MakeVolumeWithOneRecord() {
        CEGUID volume = Mount();
        const HANDLE database = Open(volume);
        Insert(database, L"kept", 1);
        Close(database);
        Unmount(volume);
    }
    std::vector<std::wstring> NamesInVolume() {
        CEGUID volume = Mount();
        const HANDLE database = Open(volume, kName);
        std::vector<std::wstring> names = Names(database);
        Close(database);
        Unmount(volume);
        return names;
    }
};

using Strings = std::vector<std::wstring>;

}  // namespace

TEST_F(VolumeTest, OpenAlwaysMakesAMissingVolumeInTheRootAndOpensItTheNextTime) {
    MakeVolumeWithOneRecord();
    EXPECT_NE(GetFileAttributesW(HostFile().c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(NamesInVolume(), Strings{L"kept"});
}

TEST_F(VolumeTest, APathFromTheRootIsTheSameFileAsThePlainName) {
    MakeVolumeWithOneRecord();
    CEGUID plain = Mount();
    CEGUID rooted = Mount(OPEN_EXISTING, L"\\kora.VOL");
    EXPECT_EQ(memcmp(&plain, &rooted, sizeof plain), 0);
    Unmount(plain);
    Unmount(rooted);
}

TEST_F(VolumeTest, CreateAlwaysDiscardsWhatIsThere) {
    MakeVolumeWithOneRecord();
    CEGUID volume = Mount(CREATE_ALWAYS | EDB_MOUNT_FLAG);
    Unmount(volume);
    EXPECT_EQ(NamesInVolume(), Strings{});
}

TEST_F(VolumeTest, CreateNewRefusesAnExistingVolumeMountedOrNot) {
    CEGUID volume = Mount(CREATE_NEW);
    ExpectMountFails(CREATE_NEW, ERROR_ALREADY_EXISTS);
    Unmount(volume);
    ExpectMountFails(CREATE_NEW | EDB_MOUNT_FLAG, ERROR_ALREADY_EXISTS);
}

TEST_F(VolumeTest, OpenExistingAndTruncateExistingNeedAVolume) {
    ExpectMountFails(OPEN_EXISTING, ERROR_FILE_NOT_FOUND);
    ExpectMountFails(TRUNCATE_EXISTING, ERROR_FILE_NOT_FOUND);
    MakeVolumeWithOneRecord();
    CEGUID volume = Mount(OPEN_EXISTING);
    Unmount(volume);
    volume = Mount(TRUNCATE_EXISTING);
    Unmount(volume);
    EXPECT_EQ(NamesInVolume(), Strings{});
}

TEST_F(VolumeTest, AMountedVolumeIsNotEmptied) {
    CEGUID volume = Mount();
    ExpectMountFails(CREATE_ALWAYS, ERROR_ACCESS_DENIED);
    ExpectMountFails(TRUNCATE_EXISTING, ERROR_ACCESS_DENIED);
    Unmount(volume);
    volume = Mount(CREATE_ALWAYS);
    Unmount(volume);
}

TEST_F(VolumeTest, EveryMountIsCountedAndGivesTheSameIdentifier) {
    CEGUID first = Mount();
    CEGUID second = Mount();
    EXPECT_EQ(memcmp(&first, &second, sizeof first), 0);
    Unmount(first);
    EXPECT_TRUE(CeFlushDBVol(&first));
    Unmount(first);
    EXPECT_FALSE(CeUnmountDBVol(&first));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_FOUND));
}

TEST_F(VolumeTest, ADatabaseLeftOpenKeepsTheVolumeAndTheNextMountSimplySucceeds) {
    CEGUID volume = Mount();
    const HANDLE left = Open(volume);
    Insert(left, L"one", 1);
    Unmount(volume);
    CEGUID again = Mount();
    EXPECT_EQ(memcmp(&volume, &again, sizeof volume), 0);
    const HANDLE database = Open(again, kName);
    EXPECT_EQ(Names(database), Strings{L"one"});
    Close(database);
    Unmount(again);
    Insert(left, L"two", 2);
    Close(left);
    EXPECT_FALSE(CeFlushDBVol(&volume));
    EXPECT_EQ(NamesInVolume(), (Strings{L"one", L"two"}));
}

TEST_F(VolumeTest, AnUnmountedVolumeLeavesOneFileOnly) {
    MakeVolumeWithOneRecord();
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW(HostFile(L"KORA*").c_str(), &data);
    ASSERT_NE(find, INVALID_HANDLE_VALUE);
    EXPECT_STREQ(data.cFileName, kVolume);
    EXPECT_FALSE(FindNextFileW(find, &data));
    FindClose(find);
}

TEST_F(VolumeTest, WrongArgumentsAreRefused) {
    EXPECT_FALSE(CeMountDBVol(nullptr, Mutable(kVolume), OPEN_ALWAYS));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    ExpectMountFails(OPEN_ALWAYS, ERROR_INVALID_PARAMETER, nullptr);
    ExpectMountFails(OPEN_ALWAYS, ERROR_INVALID_PARAMETER, L"");
    ExpectMountFails(OPEN_ALWAYS, ERROR_INVALID_PARAMETER, std::wstring(MAX_PATH, L'x').c_str());
    ExpectMountFails(0, ERROR_INVALID_PARAMETER);
    ExpectMountFails(6, ERROR_INVALID_PARAMETER);
    ExpectMountFails(0x40000004, ERROR_INVALID_PARAMETER);
    EXPECT_FALSE(CeUnmountDBVol(nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_FALSE(CeChangeDatabaseLCID(nullptr, GetSystemDefaultLCID()));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST_F(VolumeTest, AVolumeThatIsNotMountedIsNotFound) {
    CEGUID volume{};
    EXPECT_FALSE(CeFlushDBVol(&volume));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_FOUND));
    SetLastError(0);
    EXPECT_FALSE(CeChangeDatabaseLCID(&volume, GetSystemDefaultLCID()));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_FOUND));
}

TEST_F(VolumeTest, AFlushWithoutAVolumeIsMeantForAllOfThem) {
    EXPECT_TRUE(CeFlushDBVol(nullptr));
    CEGUID volume = Mount();
    EXPECT_TRUE(CeFlushDBVol(nullptr));
    Unmount(volume);
}

TEST_F(VolumeTest, TheLanguageStaysWhileADatabaseIsOpen) {
    CEGUID volume = Mount();
    const HANDLE database = Open(volume, kName);
    SetLastError(0);
    EXPECT_FALSE(CeChangeDatabaseLCID(&volume, GetSystemDefaultLCID()));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SHARING_VIOLATION));
    Close(database);
    EXPECT_TRUE(CeChangeDatabaseLCID(&volume, GetSystemDefaultLCID()));
    Unmount(volume);
}

TEST_F(VolumeTest, AMissingFolderIsToldAsSuch) {
    ExpectMountFails(OPEN_ALWAYS, ERROR_PATH_NOT_FOUND, L"\\No Such Folder\\KORA.vol");
    ExpectMountFails(CREATE_ALWAYS, ERROR_PATH_NOT_FOUND, L"\\No Such Folder\\KORA.vol");
}

TEST_F(VolumeTest, NothingIsMountedFromACardThatIsOut) {
    ASSERT_TRUE(CreateDirectoryW(HostFile(L"Storage Card").c_str(), nullptr));
    CEGUID volume = Mount(OPEN_ALWAYS, L"\\Storage Card\\K.vol");
    Unmount(volume);
    SetEnvironmentVariableW(L"KORA_STORAGECARD", L"0");
    for (const wchar_t* name : {L"\\Storage Card\\K.vol", L"Storage Card\\K.vol", L"/Storage Card/K.vol",
                                L"\\Windows\\..\\storage card\\K.vol", L"\\Storage Card.\\K.vol"}) {
        ExpectMountFails(OPEN_ALWAYS, ERROR_PATH_NOT_FOUND, name);
    }
    SetEnvironmentVariableW(L"KORA_STORAGECARD", nullptr);
}

TEST_F(VolumeTest, FilesThatAreNoVolumesAreRefusedAndStayAsTheyAre) {
    const std::string contents[] = {"", "x", std::string(100, '\0'), std::string(5000, 'n'),
                                    std::string("SQLite format 3", 16) + std::string(4080, '\1')};
    for (const std::string& noise : contents) {
        SetContents(HostFile(), noise);
        for (const DWORD flags : {OPEN_ALWAYS, OPEN_EXISTING, TRUNCATE_EXISTING}) {
            ExpectMountFails(flags | EDB_MOUNT_FLAG, ERROR_BAD_FORMAT);
        }
        ExpectMountFails(CREATE_NEW, ERROR_ALREADY_EXISTS);
        EXPECT_EQ(Contents(HostFile()), noise);
    }
    CEGUID volume = Mount(CREATE_ALWAYS);
    Unmount(volume);
}

TEST_F(VolumeTest, AVolumeThatIsCutOffIsRefusedAndStaysAsItIs) {
    MakeVolumeWithOneRecord();
    const std::string whole = Contents(HostFile());
    ASSERT_GT(whole.size(), 4096U);
    for (std::size_t size = 1; size < whole.size(); size += 331) {
        const std::string cut = whole.substr(0, size);
        SetContents(HostFile(), cut);
        CEGUID volume{};
        EXPECT_FALSE(CeMountDBVol(&volume, Mutable(kVolume), OPEN_ALWAYS)) << size;
        const DWORD error = GetLastError();
        EXPECT_TRUE(error == ERROR_BAD_FORMAT || error == ERROR_FILE_CORRUPT) << size << ": " << error;
        EXPECT_EQ(Contents(HostFile()), cut) << size;
    }
    SetContents(HostFile(), whole);
    EXPECT_EQ(NamesInVolume(), Strings{L"kept"});
}

TEST_F(VolumeTest, AJournalThatBelongsToADiscardedVolumeDoesNotReachTheNewOne) {
    MakeVolumeWithOneRecord();
    SetContents(HostFile(L"KORA.vol-journal"), std::string(2000, '\xD9'));
    CEGUID volume = Mount(CREATE_ALWAYS);
    Unmount(volume);
    EXPECT_EQ(GetFileAttributesW(HostFile(L"KORA.vol-journal").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(NamesInVolume(), Strings{});
}

TEST_F(VolumeTest, WritingFailsWhenTheHandsetIsToldSoOrHasNoRoomAndReadingGoesOn) {
    CEGUID volume = Mount();
    const HANDLE database = Open(volume, kName);
    const CEOID oid = Insert(database, L"before", 1);
    CEPROPVAL value = Number(kValue, 2);
    const struct {
        const wchar_t* variable;
        const wchar_t* setting;
    } kFailures[] = {{L"KORA_FAULT", L"seek database-write"}, {L"KORA_OBJECTSTOREFREE", L"100"}};
    for (const auto& failure : kFailures) {
        SetEnvironmentVariableW(failure.variable, failure.setting);
        SetLastError(0);
        EXPECT_EQ(CeWriteRecordProps(database, 0, 1, &value), 0U);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DISK_FULL));
        EXPECT_EQ(CeWriteRecordProps(database, oid, 1, &value), 0U);
        EXPECT_FALSE(CeDeleteRecord(database, oid));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DISK_FULL));
        CEDBASEINFOEX other = ChannelInfo(L"Other");
        EXPECT_EQ(CeCreateDatabaseEx2(&volume, &other), 0U);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DISK_FULL));
        ExpectMountFails(OPEN_ALWAYS, ERROR_DISK_FULL, L"new.vol");
        EXPECT_EQ(Names(database), Strings{L"before"});
        SetEnvironmentVariableW(failure.variable, nullptr);
    }
    EXPECT_EQ(CeWriteRecordProps(database, oid, 1, &value), oid);
    Close(database);
    Unmount(volume);
}

TEST_F(VolumeTest, TwoCopiesOfOneVolumeAreMountedUnderDifferentIdentifiers) {
    MakeVolumeWithOneRecord();
    SetContents(HostFile(L"copy.vol"), Contents(HostFile()));
    CEGUID first = Mount();
    CEGUID second = Mount(OPEN_EXISTING, L"copy.vol");
    EXPECT_NE(memcmp(&first, &second, sizeof first), 0);
    Unmount(first);
    Unmount(second);
}
