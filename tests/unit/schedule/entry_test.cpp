// Entries in the registry: created, written text by text, walked and read.
#include <windows.h>

#include <regext.h>

#include "tests/support/tuner_contract.h"
#include "tests/unit/schedule/schedule_test.h"

namespace {

using Entries = test::ScheduleTest;
using test::Texts;

constexpr wchar_t kName[] = L"RunAppAtTime-0000000001";

ScheduleEntry Entry() {
    return {L"RunAppAtTime-0000000001", L"87.5", L"Mon", L"10 : 00", L"11 : 00"};
}

TEST_F(Entries, LieBelowTheRadiosSettings) {
    EXPECT_STREQ(kSettingsKey, test::kRadioSettingsPath);
}

TEST_F(Entries, AKeyIsCreatedWithOrWithoutAName) {
    EXPECT_EQ(CreateScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, nullptr), 0);
    EXPECT_TRUE(EntryNames().empty());
    EXPECT_EQ(CreateScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, kName), 0);
    EXPECT_EQ(EntryNames(), std::vector<std::wstring>{kName});
}

TEST_F(Entries, ANullArgumentIsRefusedAndAnImpossibleKeyFails) {
    wchar_t name[kEntryNameCapacity] = L"";
    DWORD length = kEntryNameCapacity;
    const auto invalid = static_cast<HRESULT>(0x80070057);
    EXPECT_EQ(CreateScheduleKey(nullptr, test::kRadioSettingsPath, kName), invalid);
    EXPECT_EQ(CreateScheduleKey(HKEY_CLASSES_ROOT, nullptr, kName), invalid);
    EXPECT_EQ(EnumScheduleKey(nullptr, test::kRadioSettingsPath, 0, name, &length), invalid);
    EXPECT_EQ(EnumScheduleKey(HKEY_CLASSES_ROOT, nullptr, 0, name, &length), invalid);
    EXPECT_EQ(EnumScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, 0, nullptr, &length), invalid);
    EXPECT_EQ(EnumScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, 0, name, nullptr), invalid);
    const auto noKey = reinterpret_cast<HKEY>(static_cast<UINT_PTR>(0x12344));
    EXPECT_EQ(CreateScheduleKey(noKey, test::kRadioSettingsPath, kName), static_cast<HRESULT>(0x80004005));
}

TEST_F(Entries, AreWalkedByIndexUntilThereAreNoMore) {
    wchar_t name[kEntryNameCapacity] = L"";
    DWORD length = kEntryNameCapacity;
    EXPECT_EQ(EnumScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, 0, name, &length),
              static_cast<HRESULT>(0x80004005));
    CreateScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, L"first");
    CreateScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, L"second");
    EXPECT_EQ(EnumScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, 1, name, &length), 0);
    EXPECT_STREQ(name, L"second");
    EXPECT_EQ(length, 6u);
    length = kEntryNameCapacity;
    EXPECT_EQ(EnumScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, 2, name, &length),
              static_cast<HRESULT>(0x80004005));
}

TEST_F(Entries, AKeyWhoseNameIsTooLongForOneIsWalkedPastWithoutAName) {
    CreateScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, std::wstring(200, L'a').c_str());
    CreateScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, L"second");
    wchar_t name[kEntryNameCapacity] = L"before";
    DWORD length = kEntryNameCapacity;
    EXPECT_EQ(EnumScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, 0, name, &length), 0);
    EXPECT_STREQ(name, L"");
    EXPECT_EQ(length, 0u);
    length = kEntryNameCapacity;
    EXPECT_EQ(EnumScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, 1, name, &length), 0);
    EXPECT_STREQ(name, L"second");
}

TEST_F(Entries, AreWrittenAsFourTextsAndReadAgain) {
    WriteScheduleEntry(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, Entry());
    EXPECT_EQ(EntryTexts(kName), (Texts{L"87.5", L"Mon", L"10 : 00", L"11 : 00"}));
    const ScheduleEntry read = ScheduleKeys(HKEY_CLASSES_ROOT, test::kRadioSettingsPath).Read(kName);
    EXPECT_STREQ(read.szName, kName);
    EXPECT_STREQ(read.szChannel, L"87.5");
    EXPECT_STREQ(read.szWeek, L"Mon");
    EXPECT_STREQ(read.szStartTime, L"10 : 00");
    EXPECT_STREQ(read.szEndTime, L"11 : 00");
}

TEST_F(Entries, ATextThatIsMissingTooLongOrANumberIsEmpty) {
    CreateScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, kName);
    const std::wstring key = test::kRadioSettingsPath + (L"\\" + std::wstring(kName));
    RegistrySetString(HKEY_CLASSES_ROOT, key.c_str(), L"Channel", L"a text of 16 let");
    RegistrySetDWORD(HKEY_CLASSES_ROOT, key.c_str(), L"Week", 1);
    RegistrySetString(HKEY_CLASSES_ROOT, key.c_str(), L"StartTime", L"a text of 15 le");
    const ScheduleEntry read = ScheduleKeys(HKEY_CLASSES_ROOT, test::kRadioSettingsPath).Read(kName);
    EXPECT_STREQ(read.szChannel, L"");
    EXPECT_STREQ(read.szWeek, L"");
    EXPECT_STREQ(read.szStartTime, L"a text of 15 le");
    EXPECT_STREQ(read.szEndTime, L"");
}

TEST_F(Entries, ADeletedOneIsGone) {
    WriteScheduleEntry(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, Entry());
    EXPECT_TRUE(DeleteScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, kName));
    EXPECT_FALSE(DeleteScheduleKey(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, kName));
    EXPECT_TRUE(EntryNames().empty());
}

}  // namespace
