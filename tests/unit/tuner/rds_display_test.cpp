// The RDS texts of the main screen.
#include "tests/unit/tuner/monitor_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RDSDisplay : public MonitorTest {
  protected:
    RDSDisplay() { settings.Set(kEnableRDSPSPTY, 1); }
    // What a round shows besides the stereo mark.
    std::vector<ShownText> ShownByRound() {
        ForgetShown();
        Round();
        std::vector<ShownText> shown = Shown();
        shown.erase(shown.begin());
        return shown;
    }
};

TEST_F(RDSDisplay, WithoutDataEveryFieldIsClearedInItsOrder) {
    EXPECT_THAT(ShownByRound(), ElementsAre(ShownText{219, L""}, ShownText{217, L""}, ShownText{216, L""},
                                            ShownText{215, L""}, ShownText{212, L""}, ShownText{223, L""}));
    EXPECT_THAT(device.Calls(), ElementsAre("GetSignal", "GetStereo", "GetRDSData"));
}

TEST_F(RDSDisplay, AQueryThatFailsClearsTheFieldsToo) {
    device.results["GetRDSData"] = E_FAIL;
    device.rdsData = {{0, L"KORA ONE"}};
    EXPECT_EQ(ShownByRound().size(), 6u);
}

TEST_F(RDSDisplay, Kind0IsTheServiceName) {
    device.rdsData = {{0, L"KORA ONE"}};
    EXPECT_THAT(ShownByRound(), ElementsAre(ShownText{219, L"R.D.S"}, ShownText{212, L"KORA ONE"}));
}

TEST_F(RDSDisplay, Kind4LightsTheAFMarkAsWellAsTheServiceName) {
    device.rdsData = {{4, L"KORA ONE"}};
    EXPECT_THAT(ShownByRound(),
                ElementsAre(ShownText{219, L"R.D.S"}, ShownText{212, L"KORA ONE"}, ShownText{223, L"AF"}));
}

TEST_F(RDSDisplay, Kinds1And2NeverTouchTheServiceName) {
    device.rdsData = {{1, L"Good morning"}, {2, L"Gardens"}};
    EXPECT_THAT(ShownByRound(), ElementsAre(ShownText{219, L"R.D.S"}, ShownText{215, L"Good morning"}));
    EXPECT_THAT(ShownByRound(), ElementsAre(ShownText{219, L"R.D.S"}, ShownText{216, L"Gardens"}));
}

TEST_F(RDSDisplay, OtherKindsShowNoText) {
    device.rdsData = {{3, L"x"}, {5, L"y"}, {-1, L"z"}};
    for (int i = 0; i < 3; ++i) EXPECT_THAT(ShownByRound(), ElementsAre(ShownText{219, L"R.D.S"}));
}

TEST_F(RDSDisplay, TheProgrammeTypeIsShownWhenThereIsOne) {
    device.rdsData = {{0, L"KORA ONE"}, {0, L"KORA ONE"}};
    device.ptyText = L"News";
    EXPECT_THAT(ShownByRound(),
                ElementsAre(ShownText{219, L"R.D.S"}, ShownText{212, L"KORA ONE"}, ShownText{217, L"News"}));
    device.results["GetPTYText"] = E_FAIL;
    EXPECT_THAT(ShownByRound(), ElementsAre(ShownText{219, L"R.D.S"}, ShownText{212, L"KORA ONE"}));
}

TEST_F(RDSDisplay, WithoutDataTheProgrammeTypeIsNotAskedFor) {
    device.ptyText = L"News";
    Round();
    EXPECT_THAT(device.CallsExcept("GetS"), ElementsAre("GetRDSData"));
}

TEST_F(RDSDisplay, TextsOfTheFullLengthAreShown) {
    device.rdsData = {{1, std::wstring(259, L'x')}};
    device.ptyText = std::wstring(259, L'y');
    Round();
    EXPECT_EQ(LastShown(TEXT_RADIO_TEXT).size(), 259u);
    EXPECT_EQ(LastShown(TEXT_PROGRAM_TYPE).size(), 259u);
}

TEST_F(RDSDisplay, WithTheSettingOffNothingIsAskedAndNothingShown) {
    settings.Set(kEnableRDSPSPTY, 0);
    device.rdsData = {{0, L"KORA ONE"}};
    EXPECT_THAT(ShownByRound(), IsEmpty());
    EXPECT_THAT(device.Calls(), ElementsAre("GetSignal", "GetStereo"));
}

}  // namespace
