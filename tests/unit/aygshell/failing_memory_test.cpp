// AYGSHELL's calls when there is no memory for them.
#include "tests/support/failing_memory.h"

#include <gtest/gtest.h>

#include "handset/include/aygshell.h"
#include "handset/include/regext.h"
#include "tests/unit/aygshell/test_handset.h"
#include "tests/unit/aygshell/test_window.h"

namespace {

using test::Answer;

constexpr wchar_t kKey[] = L"Software\\A key that no small text has room for";
constexpr wchar_t kText[] = L"A text that no small text has room for";

template <typename Call>
void ExpectOutOfMemory(Call call) {
    test::ExpectFailureForWantOfMemory(L"AYGSHELL.dll", static_cast<DWORD>(E_OUTOFMEMORY), [&] {
        const HRESULT result = call();
        return Answer{SUCCEEDED(result), static_cast<DWORD>(result)};
    });
}

class ShellWithoutMemory : public testing::Test {
  protected:
    test::TestHandset handset;
};

TEST_F(ShellWithoutMemory, TheRegistryHelpersSaySo) {
    ASSERT_EQ(RegistrySetString(HKEY_LOCAL_MACHINE, kKey, L"Text", kText), S_OK);
    ASSERT_EQ(RegistrySetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Number", 7), S_OK);
    ExpectOutOfMemory([] {
        WCHAR text[64];
        return RegistryGetString(HKEY_LOCAL_MACHINE, kKey, L"Text", text, 64);
    });
    ExpectOutOfMemory([] {
        DWORD number = 0;
        return RegistryGetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Number", &number);
    });
}

TEST_F(ShellWithoutMemory, NothingIsBookedAndNothingTakenBack) {
    SYSTEMTIME time = {};
    time.wYear = 2026;
    time.wMonth = 11;
    time.wDay = 23;
    WCHAR name[64];
    ExpectOutOfMemory([&] { return RunAppAtTimeEx(L"\\Windows\\UI.exe", kText, &time, 0, name, 64); });
    // Of a name that was never given; with memory, that is the answer.
    ExpectOutOfMemory([&] {
        const HRESULT result = StopAppAtTimeEx(kText);
        return result == E_FAIL ? S_OK : result;
    });
    EXPECT_EQ(StopAppAtTimeEx(name), S_OK);
}

TEST_F(ShellWithoutMemory, NobodyIsNotified) {
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    ExpectOutOfMemory([&] {
        HREGNOTIFY notification = nullptr;
        const HRESULT result = RegistryNotifyWindow(HKEY_LOCAL_MACHINE, kKey, L"Text", window, WM_APP, 0,
                                                    nullptr, &notification);
        EXPECT_EQ(notification != nullptr, SUCCEEDED(result));
        return SUCCEEDED(result) ? RegistryCloseNotification(notification) : result;
    });
    DestroyWindow(window);
}

}  // namespace
