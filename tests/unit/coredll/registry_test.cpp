// The device's registry, a part of the user's own.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "handset_fixture.h"
#include "tests/support/tuner_contract.h"

namespace {

class Registry : public HandsetTest {
  protected:
    // A DWORD below the state key in the host's registry; 0xDEAD when there is none.
    DWORD OnHostRegistry(const wchar_t* path, const wchar_t* name) const {
        DWORD value = 0xDEAD;
        DWORD size = sizeof value;
        const std::wstring key = stateKey() + L"\\Registry\\" + path;
        RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value, &size);
        return value;
    }
};

LONG Set(HKEY key, const wchar_t* name, DWORD value) {
    return RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
}

DWORD Get(HKEY key, const wchar_t* name) {
    DWORD value = 0xDEAD;
    DWORD type = 0;
    DWORD size = sizeof value;
    RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
    return value;
}

}  // namespace

TEST_F(Registry, AKeyPathMayBeginWithABackslash) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CLASSES_ROOT, test::kRadioSettingsPath, 0, nullptr, 0, 0, nullptr, &key,
                              &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, static_cast<DWORD>(REG_CREATED_NEW_KEY));
    EXPECT_EQ(Set(key, L"EnableMute", 1), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    ASSERT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, test::kRadioSettingsPath + 1, 0, 0, &key), ERROR_SUCCESS);
    EXPECT_EQ(Get(key, L"EnableMute"), 1u);
    RegCloseKey(key);
    EXPECT_EQ(OnHostRegistry(test::kRadioSettings, L"EnableMute"), 1u);
}

TEST_F(Registry, AnOpenKeyTakesAPathWithABackslashToo) {
    HKEY key = nullptr;
    HKEY below = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"System\\State", 0, nullptr, 0, 0, nullptr, &key, nullptr);
    EXPECT_EQ(RegCreateKeyExW(key, L"\\Hardware", 0, nullptr, 0, 0, nullptr, &below, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(Set(below, L"Headset", 1), ERROR_SUCCESS);
    RegCloseKey(below);
    RegCloseKey(key);
    EXPECT_EQ(OnHostRegistry(L"HKLM\\System\\State\\Hardware", L"Headset"), 1u);
}

TEST_F(Registry, ARootIsGoodWhereverAKeyIs) {
    EXPECT_EQ(Set(HKEY_CLASSES_ROOT, L"Direct", 5), ERROR_SUCCESS);
    EXPECT_EQ(Get(HKEY_CLASSES_ROOT, L"Direct"), 5u);
    EXPECT_EQ(OnHostRegistry(L"HKCR", L"Direct"), 5u);
    DWORD values = 0;
    EXPECT_EQ(RegQueryInfoKeyW(HKEY_CLASSES_ROOT, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               &values, nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(values, 1u);
    EXPECT_EQ(RegDeleteValueW(HKEY_CLASSES_ROOT, L"Direct"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueW(HKEY_CLASSES_ROOT, L"Direct"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegFlushKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(HKEY_CLASSES_ROOT), ERROR_SUCCESS);
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_USERS, nullptr, 0, 0, &key), ERROR_SUCCESS);
    RegCloseKey(key);
}

TEST_F(Registry, TheRootsAreApart) {
    Set(HKEY_CLASSES_ROOT, L"Where", 1);
    Set(HKEY_LOCAL_MACHINE, L"Where", 2);
    Set(HKEY_CURRENT_USER, L"Where", 3);
    EXPECT_EQ(Get(HKEY_CLASSES_ROOT, L"Where"), 1u);
    EXPECT_EQ(Get(HKEY_LOCAL_MACHINE, L"Where"), 2u);
    EXPECT_EQ(Get(HKEY_CURRENT_USER, L"Where"), 3u);
}

TEST_F(Registry, NothingOfTheHostsIsSeenOrTouched) {
    HKEY key = nullptr;
    // Every host has this key; the device begins without it.
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Microsoft", 0, 0, &key), ERROR_FILE_NOT_FOUND);
    RegCreateKeyExW(HKEY_CURRENT_USER, L"Kora isolation test", 0, nullptr, 0, 0, nullptr, &key, nullptr);
    Set(key, L"Value", 1);
    RegCloseKey(key);
    DWORD size = 0;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Kora isolation test", L"Value", RRF_RT_ANY, nullptr, nullptr,
                           &size),
              ERROR_FILE_NOT_FOUND);
}

TEST_F(Registry, KeysAreEnumeratedInOrder) {
    for (const wchar_t* name : {L"Lists\\News", L"Lists\\Music"}) {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_CURRENT_USER, name, 0, nullptr, 0, 0, nullptr, &key, nullptr);
        RegCloseKey(key);
    }
    HKEY lists = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"\\Lists", 0, 0, &lists), ERROR_SUCCESS);
    std::wstring names;
    for (DWORD i = 0;; ++i) {
        wchar_t name[64];
        DWORD length = 64;
        const LONG result = RegEnumKeyExW(lists, i, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (result != ERROR_SUCCESS) {
            EXPECT_EQ(result, ERROR_NO_MORE_ITEMS);
            break;
        }
        names += std::wstring(name) + L" ";
    }
    EXPECT_EQ(names, L"Music News ");
    RegCloseKey(lists);
}

TEST_F(Registry, AKeyIsDeletedWithAllThatIsBelowIt) {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CLASSES_ROOT, L"A\\B\\C", 0, nullptr, 0, 0, nullptr, &key, nullptr);
    Set(key, L"Value", 1);
    RegCloseKey(key);
    EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, L"\\A"), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, L"A", 0, 0, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, L"\\A"), ERROR_FILE_NOT_FOUND);
}

TEST_F(Registry, ARootCannotBeDeleted) {
    Set(HKEY_CLASSES_ROOT, L"Value", 1);
    EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, L"\\"), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegDeleteKeyW(HKEY_CLASSES_ROOT, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Get(HKEY_CLASSES_ROOT, L"Value"), 1u);
}

TEST_F(Registry, AMissingKeyAndAMissingResultAreTold) {
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, L"No such key", 0, 0, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, L"No such key", 0, 0, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExW(HKEY_CLASSES_ROOT, L"No such value", nullptr, nullptr, nullptr, nullptr),
              ERROR_FILE_NOT_FOUND);
}
