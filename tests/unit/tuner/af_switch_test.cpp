// The move to the strongest alternative frequency.
#include <map>

#include "tests/unit/tuner/monitor_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AFSwitch : public MonitorTest {
  protected:
    AFSwitch() {
        settings.Set(kEnableAFAutoSwitch, 1);
        Level(15);
        device.alternatives = {L"98.5", L"102.3", L"87.6"};
        // The signal is that of the frequency tuned to.
        device.onCall = [this](const std::string& call) {
            if (call != "GetSignal") return;
            const auto found = signals.find(device.channel);
            device.signal = found == signals.end() ? tunedSignal : found->second;
        };
    }
    void Level(std::int32_t level) { tunedSignal = device.signal = g_app.lLastSignal = level; }
    std::vector<std::string> Tuned() const {
        std::vector<std::string> tuned;
        for (const std::string& call : device.Calls()) {
            if (call.rfind("SetChannel", 0) == 0) tuned.push_back(call);
        }
        return tuned;
    }

    std::int32_t tunedSignal = 0;
    std::map<std::uint32_t, std::int32_t> signals;  // by channel value
};

TEST_F(AFSwitch, EveryAlternativeIsTriedMutedAndTheStrongestKept) {
    signals = {{9850, 20}, {10230, 44}, {8760, 30}};
    EXPECT_EQ(TraceOfRound(), "\nCurrent MAX Frequency: 10230\n");
    EXPECT_THAT(device.Calls(),
                ElementsAre("GetSignal", "GetStereo", "GetAFCount", "SetMute 1", "GetAFItem 0", "GetAFItem 1",
                            "GetAFItem 2", "SetChannel 9850", "GetSignal", "SetChannel 10230", "GetSignal",
                            "SetChannel 8760", "GetSignal", "SetChannel 10230", "SetMute 0"));
}

TEST_F(AFSwitch, TheWindowIsPaintedAnewAndToldOfTheSwitch) {
    signals = {{9850, 20}};
    ValidateRect(window, nullptr);
    Round();
    EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE));
    EXPECT_TRUE(TakePosted(WM_AF_SWITCHED));
    EXPECT_FALSE(TakePosted(WM_AF_SWITCHED));
}

TEST_F(AFSwitch, OfTwoEqualSignalsTheFirstIsKept) {
    signals = {{9850, 40}, {10230, 40}, {8760, 40}};
    EXPECT_EQ(TraceOfRound(), "\nCurrent MAX Frequency: 9850\n");
    EXPECT_EQ(Tuned().back(), "SetChannel 9850");
}

TEST_F(AFSwitch, ASingleAlternativeIsTakenHoweverWeakItIs) {
    device.alternatives = {L"98.5"};
    signals = {{9850, -20}};
    Round();
    EXPECT_THAT(Tuned(), ElementsAre("SetChannel 9850", "SetChannel 9850"));
}

TEST_F(AFSwitch, AmongNegativeSignalsTheGreatestWins) {
    signals = {{9850, -20}, {10230, -5}, {8760, -7}};
    EXPECT_EQ(TraceOfRound(), "\nCurrent MAX Frequency: 10230\n");
}

TEST_F(AFSwitch, WithASignalOf16OrMoreTheListIsNeverRead) {
    Level(16);
    Rounds(3);
    EXPECT_THAT(device.CallsExcept("GetS"), IsEmpty());
}

TEST_F(AFSwitch, WithTheSettingOffTheListIsNeverRead) {
    settings.Set(kEnableAFAutoSwitch, 0);
    Rounds(3);
    EXPECT_THAT(device.CallsExcept("GetS"), IsEmpty());
}

TEST_F(AFSwitch, AnEmptyListEndsTheSearchBeforeTheMute) {
    device.alternatives.clear();
    EXPECT_EQ(TraceOfRound(), "");
    EXPECT_THAT(device.CallsExcept("GetS"), ElementsAre("GetAFCount"));
    EXPECT_FALSE(TakePosted(WM_AF_SWITCHED));
}

TEST_F(AFSwitch, ACountThatCannotBeReadIsAnEmptyList) {
    device.results["GetAFCount"] = E_FAIL;
    Round();
    EXPECT_THAT(device.CallsExcept("GetS"), ElementsAre("GetAFCount"));
}

TEST_F(AFSwitch, TheSearchRunsAgainAndTellsAgainWhileTheSignalStaysWeak) {
    signals = {{9850, 10}, {10230, 12}, {8760, 11}};
    Rounds(3);
    EXPECT_TRUE(TakePosted(WM_AF_SWITCHED));
    EXPECT_TRUE(TakePosted(WM_AF_SWITCHED));
    EXPECT_TRUE(TakePosted(WM_AF_SWITCHED));
    EXPECT_FALSE(TakePosted(WM_AF_SWITCHED));
}

TEST_F(AFSwitch, ItEndsOnceTheSignalIsGoodAgain) {
    signals = {{9850, 50}};
    Round();
    device.ForgetCalls();
    Rounds(2);
    EXPECT_THAT(device.CallsExcept("GetS"), IsEmpty());
}

TEST_F(AFSwitch, ALoudspeakerThatIsOnIsSwitchedOffForEachChangeOfTheMute) {
    g_app.SpeakerOn = 1;
    device.alternatives = {L"98.5"};
    Round();
    EXPECT_THAT(
        device.CallsExcept("GetS"),
        ElementsAre("GetAFCount", "SetSpeaker 0", "SetMute 1", "SetSpeaker 1", "GetAFItem 0",
                    "SetChannel 9850", "SetChannel 9850", "SetSpeaker 0", "SetMute 0", "SetSpeaker 1"));
}

TEST_F(AFSwitch, MoreThanAHundredFrequenciesAreCutToAHundred) {
    device.alternatives.assign(130, L"98.5");
    Round();
    EXPECT_EQ(Tuned().size(), 101u);
}

TEST_F(AFSwitch, ACountBelow0TriesNothing) {
    device.alternativeCount = -1;
    Round();
    EXPECT_THAT(device.CallsExcept("GetS"), ElementsAre("GetAFCount"));
}

}  // namespace
