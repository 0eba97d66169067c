// The preset favourites in the registry become groups and channels.
#include <thread>

#include "tests/support/modal_dialog.h"
#include "tests/support/wait.h"
#include "tests/unit/channels/channels_test.h"

namespace {

using test::StoredChannel;
using test::TraceOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr wchar_t kFavourites[] = L"Software\\Quillon\\Kora\\My Favorite";

class FavouritesImport : public test::ChannelsTest {
  protected:
    FavouritesImport() { RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Quillon"); }
    ~FavouritesImport() override {
        SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
        RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Quillon");
    }

    static void SetValue(const std::wstring& group, const std::wstring& value, DWORD type, const void* data,
                         DWORD size) {
        HKEY key = nullptr;
        const std::wstring path = std::wstring(kFavourites) + L"\\" + group;
        ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                  &key, nullptr),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegSetValueExW(key, value.c_str(), 0, type, static_cast<const BYTE*>(data), size),
                  ERROR_SUCCESS);
        RegCloseKey(key);
    }
    static void SetText(const std::wstring& group, const std::wstring& value, const std::wstring& text) {
        SetValue(group, value, REG_SZ, text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR)));
    }
    static void SetNumber(const std::wstring& group, const std::wstring& value, DWORD number) {
        SetValue(group, value, REG_DWORD, &number, sizeof number);
    }
    static void Preset(const std::wstring& group, const std::wstring& number, DWORD value,
                       const std::wstring& name) {
        SetNumber(group, L"ChannelValue" + number, value);
        SetText(group, L"ChannelName" + number, name);
    }

    // The two steps of a build, each on its open database; 1 when both succeed.
    int Import() {
        int result = 0;
        trace = TraceOf([&] {
            CEGUID guid = {};
            CeMountDBVol(&guid, const_cast<LPWSTR>(L"KORA.vol"), EDB_MOUNT_FLAG | OPEN_ALWAYS);
            db.CEDB_FindGroup(L"");
            db.CEDB_OpenIndexDB(kGroupDatabase);
            result = db.CEDB_ImportGroups();
            if (result != 0) {
                CChannelDB channels = db;
                channels.CEDB_OpenDB(kChannelDatabase);
                result = channels.CEDB_ImportChannels();
                channels.CEDB_Close();
                CeMountDBVol(&guid, const_cast<LPWSTR>(L"KORA.vol"), EDB_MOUNT_FLAG | OPEN_ALWAYS);
            }
            db.CEDB_Close();
        });
        return result;
    }
    std::string trace;
};

TEST_F(FavouritesImport, OneSubkeyGivesOneGroupAndOneChannel) {
    SetText(L"A", L"Name", L"Mine");
    Preset(L"A", L"1", 9850, L"One");
    SetText(L"A", L"ChannelProgramGuide1", L"http://one");
    EXPECT_EQ(Import(), 1);
    EXPECT_THAT(Groups(), ElementsAre(L"Mine"));
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Mine", L"One", 9850, L"http://one"}));
    EXPECT_THAT(trace, HasSubstr("======================================================================"
                                 "szCountryName: Mine"
                                 "szChannelName: One dwChannelValue: 9850"
                                 "szChannelPGuide: http://one"));
    EXPECT_THAT(trace, HasSubstr("DBPlr wrote total: 1 records\n"));
}

TEST_F(FavouritesImport, AMissingFavouritesKeyLeavesBothDatabasesEmptyAndSucceeds) {
    EXPECT_EQ(Import(), 1);
    EXPECT_THAT(Groups(), IsEmpty());
    EXPECT_THAT(Channels(), IsEmpty());
    EXPECT_THAT(trace, HasSubstr("DBPlr wrote total: 0 records\n"));
}

TEST_F(FavouritesImport, AValueNameInLowerCaseIsNoChannel) {
    SetText(L"A", L"Name", L"Mine");
    SetNumber(L"A", L"channelvalue1", 9850);
    EXPECT_EQ(Import(), 1);
    EXPECT_THAT(Channels(), IsEmpty());
}

TEST_F(FavouritesImport, AChannelValueWithoutANumberReadsTheTextsNumberedZero) {
    SetText(L"A", L"Name", L"Mine");
    SetNumber(L"A", L"ChannelValue", 9850);
    SetText(L"A", L"ChannelName0", L"Zero");
    SetText(L"A", L"ChannelProgramGuide0", L"guide zero");
    Import();
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Mine", L"Zero", 9850, L"guide zero"}));
}

TEST_F(FavouritesImport, LeadingZerosOfTheNumberDoNotCount) {
    SetText(L"A", L"Name", L"Mine");
    SetNumber(L"A", L"ChannelValue07", 9850);
    SetText(L"A", L"ChannelName7", L"Seven");
    Import();
    ASSERT_EQ(Channels().size(), 1u);
    EXPECT_EQ(Channels()[0].name, L"Seven");
}

TEST_F(FavouritesImport, APercentSignInTheNumberIsReadAsAFormat) {
    SetText(L"A", L"Name", L"Mine");
    SetNumber(L"A", L"ChannelValue%%7", 9850);
    SetText(L"A", L"ChannelName0", L"Zero");
    SetText(L"A", L"ChannelName7", L"Seven");
    Import();
    ASSERT_EQ(Channels().size(), 1u);
    EXPECT_EQ(Channels()[0].name, L"Zero");  // "%7" is no number
}

TEST_F(FavouritesImport, TwoSubkeysWithTheSameNameGiveTwoGroups) {
    SetText(L"A", L"Name", L"Mine");
    SetText(L"B", L"Name", L"Mine");
    Import();
    EXPECT_THAT(Groups(), ElementsAre(L"Mine", L"Mine"));
}

TEST_F(FavouritesImport, TheSameFrequencyIsWrittenTwice) {
    SetText(L"A", L"Name", L"Mine");
    Preset(L"A", L"1", 9850, L"One");
    Preset(L"A", L"2", 9850, L"Two");
    Import();
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Mine", L"One", 9850, L""},
                                        StoredChannel{L"Mine", L"Two", 9850, L""}));
}

TEST_F(FavouritesImport, ATextThatIsMissingIsTheOneOfTheChannelBefore) {
    SetText(L"A", L"Name", L"Mine");
    Preset(L"A", L"1", 9850, L"One");
    SetText(L"A", L"ChannelProgramGuide1", L"guide");
    SetNumber(L"A", L"ChannelValue2", 9860);
    Preset(L"B", L"1", 9870, L"Three");
    Import();
    EXPECT_THAT(Groups(), ElementsAre(L"Mine", L"Mine"));
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Mine", L"One", 9850, L"guide"},
                                        StoredChannel{L"Mine", L"One", 9860, L"guide"},
                                        StoredChannel{L"Mine", L"Three", 9870, L"guide"}));
}

TEST_F(FavouritesImport, WhatIsMissingBeforeTheFirstTextIsEmpty) {
    SetNumber(L"A", L"ChannelValue1", 9850);
    Import();
    EXPECT_THAT(Groups(), ElementsAre(L""));
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"", L"", 9850, L""}));
}

TEST_F(FavouritesImport, ATextOf49CharactersFitsAndALongerOneIsNotRead) {
    SetText(L"A", L"Name", std::wstring(49, L'g'));
    Preset(L"A", L"1", 9850, std::wstring(49, L'c'));
    Preset(L"A", L"2", 9860, std::wstring(51, L'd'));
    SetText(L"B", L"Name", std::wstring(260, L'h'));
    Import();
    EXPECT_THAT(Groups(), ElementsAre(std::wstring(49, L'g'), std::wstring(49, L'g')));
    ASSERT_EQ(Channels().size(), 2u);
    EXPECT_EQ(Channels()[0].name, std::wstring(49, L'c'));
    EXPECT_EQ(Channels()[1].name, std::wstring(49, L'c'));
}

// The registry takes any number of bytes for a text.
TEST_F(FavouritesImport, ATextIsReadUpToAHundredBytesAndNotOneMore) {
    const std::vector<BYTE> bytes(101, 'b');
    SetText(L"A", L"Name", L"Mine");
    Preset(L"A", L"1", 9850, L"One");
    SetValue(L"A", L"ChannelName1", REG_SZ, bytes.data(), 101);
    Preset(L"A", L"2", 9860, L"Two");
    SetValue(L"A", L"ChannelName2", REG_SZ, bytes.data(), 100);
    Import();
    ASSERT_EQ(Channels().size(), 2u);
    EXPECT_EQ(Channels()[0].name, L"");
    EXPECT_EQ(Channels()[1].name, std::wstring(50, L'\x6262'));
}

TEST_F(FavouritesImport, ValuesOfTheWrongTypeAreNotRead) {
    const DWORD number = 7;
    SetText(L"A", L"Name", L"Mine");
    SetText(L"A", L"ChannelValue1", L"not a number at all");
    SetValue(L"A", L"ChannelName1", REG_DWORD, &number, sizeof number);
    EXPECT_EQ(Import(), 1);
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Mine", L"", 0, L""}));
}

TEST_F(FavouritesImport, ASubkeyWhoseNameIsTooLongIsReadAsTheGroupBefore) {
    SetText(L"A", L"Name", L"Mine");
    SetText(std::wstring(60, L'B'), L"Name", L"Yours");
    EXPECT_EQ(Import(), 1);
    EXPECT_THAT(Groups(), ElementsAre(L"Mine", L"Mine"));
}

TEST_F(FavouritesImport, HundredsOfGroupsComeInWhole) {
    for (int i = 0; i < 300; ++i) {
        const std::wstring group = L"G" + std::to_wstring(1000 + i);
        SetText(group, L"Name", group);
        Preset(group, L"1", 8750 + static_cast<DWORD>(i), L"One");
    }
    EXPECT_EQ(Import(), 1);
    EXPECT_EQ(Groups().size(), 300u);
    EXPECT_EQ(Channels().size(), 300u);
    EXPECT_EQ(Channels().back(), (StoredChannel{L"G1299", L"One", 9049, L""}));
    EXPECT_THAT(trace, HasSubstr("DBPlr wrote total: 300 records\n"));
}

TEST_F(FavouritesImport, WithoutAnOpenDatabaseNothingIsReadAndTheStepCountsAsDone) {
    SetText(L"A", L"Name", L"Mine");
    CChannelDB closed;
    EXPECT_EQ(TraceOf([&] { EXPECT_EQ(closed.CEDB_ImportGroups(), 1); }),
              "ERROR: Null or invalid database handle\n");
    EXPECT_EQ(TraceOf([&] { EXPECT_EQ(closed.CEDB_ImportChannels(), 1); }),
              "ERROR: Null or invalid database handle\n");
}

TEST_F(FavouritesImport, AWriteThatFailsEndsTheStepAndNamesTheError) {
    SetText(L"A", L"Name", L"Mine");
    PutGroup(L"made before");
    Put(L"made", L"before", 9990);
    SetEnvironmentVariableW(L"KORA_FAULT", L"database-write");
    EXPECT_EQ(Import(), 0);
    EXPECT_THAT(trace, HasSubstr("CeWriteRecordProps failed error [112]\n"));  // no room on the disk
    EXPECT_THAT(trace, testing::Not(HasSubstr("DBPlr wrote total")));
    SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
    EXPECT_THAT(Groups(), ElementsAre(L"made before"));
}

// The disk fills up once the volume is there: its groups are too many to be written by then.
TEST_F(FavouritesImport, ABuildThatFailsLeavesTheVolumeMounted) {
    for (int i = 0; i < 300; ++i) SetText(L"G" + std::to_wstring(1000 + i), L"Name", L"Mine");
    std::thread disk([] {
        test::WaitFor([] { return GetFileAttributesW(L"\\KORA.vol") != INVALID_FILE_ATTRIBUTES; });
        SetEnvironmentVariableW(L"KORA_FAULT", L"database-write");
    });
    WCHAR caption[40] = L"";
    const auto build = [this] {
        db.CEDB_BuildFromRegistry();
        return 0;
    };
    const auto answer = [&](HWND box) {
        GetWindowTextW(box, caption, 40);
        PostMessageW(box, WM_COMMAND, IDOK, 0);
    };
    TraceOf([&] { test::ModalDialog::Run(build, answer); });
    disk.join();
    SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
    EXPECT_STREQ(caption, L"Error");
    EXPECT_TRUE(VolumeIsMounted());
    EXPECT_TRUE(db.CEDB_Close());
}

}  // namespace
