// What the values of the registry say.
#include "handset/base/registry_value.h"

#include <gtest/gtest.h>

namespace {

using namespace handset;

constexpr wchar_t kKey[] = L"Software\\KoraBaseTest";

class RegistryValueTest : public ::testing::Test {
  protected:
    ~RegistryValueTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, kKey); }

    static void Write(DWORD type, const void* data, DWORD size) {
        ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"Value", type, data, size), ERROR_SUCCESS);
    }
    static std::optional<RegistryValue> Read() {
        return ReadRegistryValue(HKEY_CURRENT_USER, kKey, L"Value");
    }
};

}  // namespace

TEST_F(RegistryValueTest, WhatIsNotThereIsNothing) {
    EXPECT_FALSE(Read().has_value());
}

TEST_F(RegistryValueTest, ATextEndsAtItsTerminatorOrWhereItWasStored) {
    Write(REG_SZ, L"two\0words", 10 * sizeof(wchar_t));
    EXPECT_EQ(AsText(*Read()), L"two");
    // Without a terminator.
    EXPECT_EQ(AsText(BytesValue(REG_SZ, L"one", 3 * sizeof(wchar_t))), L"one");
    // With half a character at its end.
    EXPECT_EQ(AsText(BytesValue(REG_SZ, L"one", 3 * sizeof(wchar_t) - 1)), L"on");
    EXPECT_EQ(AsText(BytesValue(REG_SZ, nullptr, 0)), L"");
    EXPECT_FALSE(AsText(DwordValue(5)).has_value());
}

TEST_F(RegistryValueTest, ANumberHasTheSizeOfItsType) {
    EXPECT_EQ(AsDword(DwordValue(0x01020304)), 0x01020304u);
    EXPECT_EQ(AsNumber(DwordValue(7)), 7u);
    const std::uint64_t wide = 0x0102030405060708;
    EXPECT_EQ(AsNumber(BytesValue(REG_QWORD, &wide, sizeof wide)), wide);
    EXPECT_FALSE(AsDword(BytesValue(REG_QWORD, &wide, sizeof wide)).has_value());
    EXPECT_FALSE(AsDword(BytesValue(REG_DWORD, &wide, 3)).has_value());
    EXPECT_FALSE(AsNumber(BytesValue(REG_QWORD, &wide, 4)).has_value());
    EXPECT_FALSE(AsNumber(TextValue(L"7")).has_value());
}

TEST_F(RegistryValueTest, ALongValueIsReadWhole) {
    const std::wstring text(10000, L'x');
    Write(REG_SZ, text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    EXPECT_EQ(AsText(*Read()), text);
    EXPECT_EQ(*Read(), TextValue(text));
}
