// The registry helpers: values written, read, and refused.
#include <gtest/gtest.h>

#include <cwchar>
#include <iterator>

#include "handset/include/regext.h"
#include "tests/unit/aygshell/test_handset.h"

namespace {

constexpr wchar_t kKey[] = L"System\\State\\Hardware";
constexpr wchar_t kKeyWithBackslash[] = L"\\System\\State\\Hardware";

class RegistryValues : public ::testing::Test {
  protected:
    // As it lies on the host, past everything under test.
    LSTATUS HostValue(const wchar_t* root, const wchar_t* key, const wchar_t* name, DWORD* type,
                      DWORD* data) const {
        DWORD size = sizeof *data;
        return RegGetValueW(HKEY_CURRENT_USER, (m_handset.HostKey(root) + L"\\" + key).c_str(), name,
                            RRF_RT_ANY, type, data, &size);
    }

    test::TestHandset m_handset;
};

TEST_F(RegistryValues, AreReadAsTheyWereWritten) {
    EXPECT_EQ(RegistrySetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Headset", 1), S_OK);
    EXPECT_EQ(RegistrySetString(HKEY_CURRENT_USER, kKey, L"Caller Number", L"+49 30 123"), S_OK);
    DWORD number = 7;
    wchar_t text[32] = {};
    EXPECT_EQ(RegistryGetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Headset", &number), S_OK);
    EXPECT_EQ(number, 1u);
    EXPECT_EQ(RegistryGetString(HKEY_CURRENT_USER, kKey, L"Caller Number", text, 32), S_OK);
    EXPECT_STREQ(text, L"+49 30 123");
}

TEST_F(RegistryValues, LieInTheDevicesPartOfTheHostsRegistry) {
    EXPECT_EQ(RegistrySetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Headset", 0x12345678), S_OK);
    DWORD type = 0;
    DWORD data = 0;
    EXPECT_EQ(HostValue(L"HKLM", kKey, L"Headset", &type, &data), ERROR_SUCCESS);
    EXPECT_EQ(type, DWORD{REG_DWORD});
    EXPECT_EQ(data, 0x12345678u);
    EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE, kKey, L"Headset", RRF_RT_ANY, nullptr, nullptr, nullptr),
              ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryValues, TakeAKeyWithALeadingBackslash) {
    EXPECT_EQ(RegistrySetDWORD(HKEY_CLASSES_ROOT, kKeyWithBackslash, L"EnableMute", 3), S_OK);
    DWORD number = 0;
    EXPECT_EQ(RegistryGetDWORD(HKEY_CLASSES_ROOT, kKey, L"EnableMute", &number), S_OK);
    EXPECT_EQ(number, 3u);
    EXPECT_EQ(RegistrySetString(HKEY_CLASSES_ROOT, kKey, L"Selected", L"A"), S_OK);
    wchar_t text[2] = {};
    EXPECT_EQ(RegistryGetString(HKEY_CLASSES_ROOT, kKeyWithBackslash, L"Selected", text, 2), S_OK);
    EXPECT_STREQ(text, L"A");
}

TEST_F(RegistryValues, ThatAreMissingFailAndLeaveTheVariableAlone) {
    DWORD number = 42;
    wchar_t text[8] = L"before";
    EXPECT_EQ(RegistryGetDWORD(HKEY_LOCAL_MACHINE, L"No\\Such\\Key", L"Value", &number), E_FAIL);
    EXPECT_EQ(RegistryGetString(HKEY_LOCAL_MACHINE, L"No\\Such\\Key", L"Value", text, 8), E_FAIL);
    RegistrySetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Other", 1);
    EXPECT_EQ(RegistryGetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Value", &number), E_FAIL);
    EXPECT_EQ(RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Value", text, 8), E_FAIL);
    EXPECT_EQ(number, 42u);
    EXPECT_STREQ(text, L"before");
}

TEST_F(RegistryValues, OfAnotherTypeFailAndLeaveTheVariableAlone) {
    RegistrySetString(HKEY_LOCAL_MACHINE, kKey, L"Text", L"12");
    RegistrySetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Number", 0x00410041);
    DWORD number = 42;
    wchar_t text[8] = L"before";
    EXPECT_EQ(RegistryGetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Text", &number), E_FAIL);
    EXPECT_EQ(RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Number", text, 8), E_FAIL);
    EXPECT_EQ(number, 42u);
    EXPECT_STREQ(text, L"before");
}

TEST_F(RegistryValues, OfTextFillTheirRoomExactlyOrNotAtAll) {
    RegistrySetString(HKEY_LOCAL_MACHINE, kKey, L"Text", L"12345");
    wchar_t text[6] = L"empty";
    EXPECT_EQ(RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Text", text, 5),
              HRESULT_FROM_WIN32(ERROR_MORE_DATA));
    EXPECT_STREQ(text, L"empty");
    EXPECT_EQ(RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Text", text, 6), S_OK);
    EXPECT_STREQ(text, L"12345");
}

TEST_F(RegistryValues, OfTextMayBeEmpty) {
    EXPECT_EQ(RegistrySetString(HKEY_LOCAL_MACHINE, kKey, L"Text", L""), S_OK);
    wchar_t text[6] = L"full";
    EXPECT_EQ(RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Text", text, 6), S_OK);
    EXPECT_STREQ(text, L"");
}

TEST_F(RegistryValues, OfTextAreCompleteEvenWhenStoredWithoutATerminator) {
    RegistrySetString(HKEY_LOCAL_MACHINE, kKey, L"Other", L"");
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, (m_handset.HostKey(L"HKLM") + L"\\" + kKey).c_str(), L"Text",
                              REG_SZ, L"abc", 3 * sizeof(wchar_t)),
              ERROR_SUCCESS);
    wchar_t text[4] = L"";
    EXPECT_EQ(RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Text", text, 4), S_OK);
    EXPECT_STREQ(text, L"abc");
}

TEST_F(RegistryValues, MayBeLong) {
    const std::wstring longText(20000, L'x');
    EXPECT_EQ(RegistrySetString(HKEY_LOCAL_MACHINE, kKey, L"Text", longText.c_str()), S_OK);
    std::wstring text(longText.size() + 1, L'\0');
    EXPECT_EQ(
        RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Text", text.data(), static_cast<UINT>(text.size())),
        S_OK);
    EXPECT_EQ(std::wcslen(text.c_str()), longText.size());
}

TEST_F(RegistryValues, MayLieInAnOpenKeyOrInARoot) {
    EXPECT_EQ(RegistrySetDWORD(HKEY_LOCAL_MACHINE, nullptr, L"InTheRoot", 5), S_OK);
    DWORD number = 0;
    EXPECT_EQ(RegistryGetDWORD(HKEY_LOCAL_MACHINE, L"", L"InTheRoot", &number), S_OK);
    EXPECT_EQ(number, 5u);
    HKEY key = nullptr;
    ASSERT_EQ(
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Open", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
        ERROR_SUCCESS);
    EXPECT_EQ(RegistrySetDWORD(key, L"Below", L"Value", 6), S_OK);
    EXPECT_EQ(RegistryGetDWORD(HKEY_LOCAL_MACHINE, L"Open\\Below", L"Value", &number), S_OK);
    EXPECT_EQ(number, 6u);
    RegCloseKey(key);
}

TEST_F(RegistryValues, RefuseWhatIsNull) {
    DWORD number = 0;
    wchar_t text[4] = L"";
    EXPECT_EQ(RegistryGetDWORD(nullptr, kKey, L"Value", &number), E_INVALIDARG);
    EXPECT_EQ(RegistryGetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Value", nullptr), E_INVALIDARG);
    EXPECT_EQ(RegistrySetDWORD(nullptr, kKey, L"Value", 1), E_INVALIDARG);
    EXPECT_EQ(RegistryGetString(nullptr, kKey, L"Value", text, 4), E_INVALIDARG);
    EXPECT_EQ(RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Value", nullptr, 4), E_INVALIDARG);
    EXPECT_EQ(RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Value", text, 0), E_INVALIDARG);
    EXPECT_EQ(RegistrySetString(nullptr, kKey, L"Value", L""), E_INVALIDARG);
    EXPECT_EQ(RegistrySetString(HKEY_LOCAL_MACHINE, kKey, L"Value", nullptr), E_INVALIDARG);
}

}  // namespace
