// Two handsets on one desktop: what one of them looks for is never the other's.
#include "handset/controls/radio_windows.h"
#include "tests/unit/handset/stand_in_test.h"

namespace panel {
namespace {

class SideBySide : public StandInTest {
  protected:
    ~SideBySide() override {
        GoTo(stateKey_, root_);
        RegDeleteTreeW(HKEY_CURRENT_USER, OtherKey().c_str());
    }
    void GoToTheOther() { GoTo(OtherKey(), home_ + L"\\other"); }
    void ComeBack() { GoTo(stateKey_, root_); }

  private:
    [[nodiscard]] std::wstring OtherKey() const { return stateKey_ + L" other"; }
    static void GoTo(const std::wstring& key, const std::wstring& root) {
        SetEnvironmentVariableW(L"KORA_STATEKEY", key.c_str());
        SetEnvironmentVariableW(L"KORA_DEVICEROOT", root.c_str());
    }
};

TEST_F(SideBySide, TheOtherHandsetsRadioIsNeitherFoundNorToldNorClosed) {
    StartStandIn();
    ASSERT_NE(RadioMainWindow(), nullptr);
    GoToTheOther();
    EXPECT_EQ(RadioMainWindow(), nullptr);
    EXPECT_FALSE(AskRadioToClose());
    EXPECT_EQ(Run({L"stop"}), kDone);
    EXPECT_EQ(Run({L"bluetooth", L"4"}), kDone);
    EXPECT_EQ(Run({L"key", L"7"}), kFailed);
    EXPECT_NE(console_.Complained().find(L"the radio does not run"), std::wstring::npos);
    ComeBack();
    // What was posted before this key would have come before it.
    ASSERT_EQ(Run({L"key", L"1"}), kDone);
    EXPECT_TRUE(WaitForNote("child keyup 49\n")) << Notes();
    EXPECT_EQ(Notes().find("bluetooth"), std::string::npos) << Notes();
    EXPECT_TRUE(RadioProcess().has_value());
}

}  // namespace
}  // namespace panel
