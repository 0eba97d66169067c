// reg: the device's registry from the command line.
#include "handset/controls/device_registry.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

using Registry = HandsetTest;

constexpr wchar_t kKey[] = L"HKLM\\Software\\Test";

TEST_F(Registry, WhatWasSetIsGotBackInEveryType) {
    struct Row {
        const wchar_t *type, *data, *shown;
    };
    const Row kRows[] = {{L"dword", L"4294967295", L"4294967295\n"},
                         {L"dword", L"0x10", L"16\n"},
                         {L"string", L"Grüße, two  blanks ", L"Grüße, two  blanks \n"},
                         {L"string", L"", L"\n"},
                         {L"qword", L"0x123456789ABCDEF0", L"1311768467463790320\n"},
                         {L"REG_DWORD", L"17", L"17\n"},
                         {L"DWord", L"18", L"18\n"},
                         {L"REG_SZ", L"text", L"text\n"},
                         {L"reg_sz", L"text too", L"text too\n"},
                         {L"String", L"and this", L"and this\n"},
                         {L"Reg_Qword", L"19", L"19\n"}};
    for (const Row& row : kRows) {
        EXPECT_EQ(Run({L"reg", L"set", kKey, L"Value", row.type, row.data}), kDone) << row.type;
        EXPECT_EQ(Run({L"reg", L"get", kKey, L"Value"}), kDone);
        EXPECT_EQ(console_.Said(), row.shown);
    }
}

TEST_F(Registry, ValuesLieBelowTheStateKeyAndNowhereElse) {
    Run({L"reg", L"set", L"HKCR\\\\CLSID\\x", L"V", L"dword", L"7"});
    Run({L"reg", L"set", L"HKEY_CLASSES_ROOT\\CLSID\\x", L"W", L"dword", L"8"});
    DWORD data = 0;
    DWORD size = sizeof data;
    const std::wstring path = stateKey_ + L"\\Registry\\HKCR\\CLSID\\x";
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, path.c_str(), L"W", RRF_RT_REG_DWORD, nullptr, &data, &size),
              0);
    EXPECT_EQ(data, 8u);
    HKEY key = nullptr;
    EXPECT_NE(RegOpenKeyExW(HKEY_CLASSES_ROOT, L"CLSID\\x", 0, KEY_READ, &key), ERROR_SUCCESS);
}

TEST_F(Registry, AKeyIsTakenWithABackslashAtEitherEnd) {
    Run({L"reg", L"set", kKey, L"V", L"dword", L"7"});
    for (const wchar_t* key :
         {L"\\HKLM\\Software\\Test", L"HKLM\\Software\\Test\\", L"hklm\\software\\test"}) {
        EXPECT_EQ(Run({L"reg", L"get", key, L"V"}), kDone);
        EXPECT_EQ(console_.Said(), L"7\n");
    }
}

TEST_F(Registry, AValueThatIsNotThereIsNamed) {
    EXPECT_EQ(Run({L"reg", L"get", kKey, L"Nothing"}), kFailed);
    EXPECT_EQ(console_.Complained(), L"handset reg: there is no value \"Nothing\" in HKLM\\Software\\Test\n");
    EXPECT_EQ(Run({L"reg", L"delete", kKey, L"Nothing"}), kFailed);
    EXPECT_EQ(Run({L"reg", L"get", kKey}), kFailed);
    EXPECT_EQ(Run({L"reg", L"delete", kKey}), kFailed);
}

TEST_F(Registry, ADeletedValueIsGoneAndItsNeighbourStays) {
    Run({L"reg", L"set", kKey, L"A", L"dword", L"1"});
    Run({L"reg", L"set", kKey, L"B", L"dword", L"2"});
    EXPECT_EQ(Run({L"reg", L"delete", kKey, L"A"}), kDone);
    EXPECT_FALSE(GetDeviceValue(kKey, L"A").has_value());
    EXPECT_EQ(DeviceDword(kKey, L"B", 0), 2u);
}

TEST_F(Registry, ADeletedKeyIsGoneWithEverythingBelowIt) {
    Run({L"reg", L"set", L"HKLM\\Software\\Test\\Deep\\Deeper", L"A", L"dword", L"1"});
    EXPECT_EQ(Run({L"reg", L"delete", kKey}), kDone);
    EXPECT_FALSE(DeviceKeyExists(kKey));
    EXPECT_TRUE(DeviceKeyExists(L"HKLM\\Software"));
}

TEST_F(Registry, AKeyIsListedWithSubkeysAndTypedValues) {
    Run({L"reg", L"set", kKey, L"Number", L"dword", L"5"});
    Run({L"reg", L"set", kKey, L"Text", L"string", L"five"});
    Run({L"reg", L"set", L"HKLM\\Software\\Test\\Sub", L"A", L"dword", L"1"});
    EXPECT_EQ(Run({L"reg", L"get", kKey}), kDone);
    EXPECT_EQ(console_.Said(), L"[Sub]\nNumber dword 5\nText string five\n");
}

}  // namespace
}  // namespace panel
