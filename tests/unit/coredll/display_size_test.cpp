// The display's size, which is kept between two questions: what a program that is none of the handset's
// writes is seen a moment later.
#include <gtest/gtest.h>
#include <windows.h>

#include "handset_fixture.h"

namespace {

constexpr wchar_t kValue[] = L"ScreenWidth";

// Straight into the host's registry, past every call of the handset.
class DisplaySize : public HandsetTest {
  protected:
    void Write(DWORD width) const {
        static const auto write = HostFunction<LSTATUS WINAPI(HKEY, LPCWSTR, LPCWSTR, DWORD, LPCVOID, DWORD)>(
            "advapi32.dll", "RegSetKeyValueW");
        ASSERT_EQ(write(HKEY_CURRENT_USER, stateKey().c_str(), kValue, REG_DWORD, &width, sizeof width),
                  ERROR_SUCCESS);
    }
    void DeleteState() const {
        static const auto remove =
            HostFunction<LSTATUS WINAPI(HKEY, LPCWSTR)>("advapi32.dll", "RegDeleteTreeW");
        remove(HKEY_CURRENT_USER, stateKey().c_str());
    }
    static bool BecomesWide(DWORD width) {
        return Eventually([width] { return GetSystemMetrics(SM_CXSCREEN) == static_cast<int>(width); });
    }
};

TEST_F(DisplaySize, FollowsEveryChangeOfTheState) {
    for (DWORD width = 300; width < 400; ++width) {
        Write(width);
        ASSERT_TRUE(BecomesWide(width));
        ASSERT_EQ(GetSystemMetrics(SM_CXSCREEN), static_cast<int>(width));
    }
}

TEST_F(DisplaySize, IsTheFirstOneAgainWhenTheStateIsGone) {
    Write(320);
    EXPECT_TRUE(BecomesWide(320));
    DeleteState();
    EXPECT_TRUE(BecomesWide(240));
}

TEST_F(DisplaySize, FollowsAStateThatWasMadeAnew) {
    for (DWORD width = 300; width < 310; ++width) {
        Write(width);
        ASSERT_TRUE(BecomesWide(width));
        DeleteState();
        Write(width + 100);
        ASSERT_TRUE(BecomesWide(width + 100));
        Write(width + 200);
        ASSERT_TRUE(BecomesWide(width + 200));
    }
}

TEST_F(DisplaySize, FollowsAnotherHandset) {
    Write(320);
    EXPECT_TRUE(BecomesWide(320));
    const std::wstring other = stateKey() + L" other";
    SetState(L"KORA_STATEKEY", other.c_str());
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 240);
    SetState(L"KORA_STATEKEY", stateKey().c_str());
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 320);
}

}  // namespace
