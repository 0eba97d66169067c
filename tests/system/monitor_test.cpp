// The monitor at work: what follows the signal by itself, and what it survives.
#include "resources/resource_ids.h"
#include "tests/support/screen_picture.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// One station with two more frequencies, by the level of each.
std::string Band(int tuned, int first = 30, int second = 50) {
    return "[9850]\nlevel=" + std::to_string(tuned) +
           "\nstereo=1\nps=KORA ONE\npty=News\nrt=Good morning\naf=101.1 103.4\n[10110]\nlevel=" +
           std::to_string(first) + "\nps=KORA ONE\naf=98.5 103.4\n[10340]\nlevel=" + std::to_string(second) +
           "\nps=KORA ONE\naf=98.5 101.1\n";
}

class Monitor : public test::RadioTest {
  protected:
    Monitor() : m_rate(Hurry(20)) { handset.WriteBand(Band(45)); }
    // The radio is shown and tuned to 98.5 MHz.
    void Tune(Radio& radio) const {
        radio.WaitUntilShown();
        radio.Type("985");
        ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
        ASSERT_TRUE(WaitForLevel(45));
    }
    int TraceCount(const std::string& line) const { return Count(test::Lines(handset.Trace()), line); }
    // Answers every box that comes, while it waits.
    template <typename Condition>
    static bool WaitAnswering(const Radio& radio, Condition condition) {
        return WaitFor([&] {
            if (const HWND box = radio.Box(L"FM")) Radio::Answer(box, IDOK);
            return condition();
        });
    }

    // Just weak, and just not; real signals are not that exact.
    const int m_weak = test::OnTheEther() ? 13 : 15, m_normal = test::OnTheEther() ? 19 : 16;
    const int m_rate;
};

TEST_F(Monitor, TheSignalIsFollowedAndTracedWhenItChanges) {
    Radio radio(handset);
    Tune(radio);
    handset.WriteBand(Band(33));
    EXPECT_TRUE(WaitForLevel(33));
    ASSERT_TRUE(WaitForRounds(5));
    std::vector<std::string> traced;
    // Not every line before one has an end of its own.
    for (const std::string& line : test::Lines(handset.Trace())) {
        const std::size_t at = line.find("FM: Signal = ");
        if (at != std::string::npos) traced.push_back(line.substr(at));
    }
    std::vector<std::string> changes = {"FM: Signal = 0 "};
    for (const std::string& call : handset.TunerCalls()) {
        if (call.rfind("GetSignal -> 0: ", 0) != 0) continue;
        const std::string line = "FM: Signal = " + call.substr(16) + " ";
        if (line != changes.back()) changes.push_back(line);
    }
    changes.erase(changes.begin());
    // A change may have come between the two looks.
    ASSERT_GE(changes.size(), traced.size());
    changes.resize(traced.size());
    EXPECT_GE(traced.size(), 2u);
    EXPECT_EQ(traced, changes);
}

TEST_F(Monitor, AWeakSignalMutesOnceAndAGoodOneRestoresTheVolume) {
    Radio radio(handset);
    Tune(radio);
    Set(L"EnableMute", 1);
    const std::size_t before = handset.TunerCalls().size();
    handset.WriteBand(Band(m_weak));
    ASSERT_TRUE(WaitForTrace("FM: === Mute (for low signal)\r\n"));
    ASSERT_TRUE(WaitForRounds(5));
    handset.WriteBand(Band(m_normal));
    ASSERT_TRUE(WaitForTrace("FM: === UN-Mute (for normal signal)\r\n"));
    ASSERT_TRUE(WaitForRounds(2));
    EXPECT_THAT(TunerCommands(before),
                ElementsAre("GetVolume -> 0: 50", "SetVolume 0 -> 0", "SetVolume 50 -> 0"));
}

TEST_F(Monitor, TheNoticeOfAWeakSignalIsThereAgainAfterTheScreenWasPainted) {
    constexpr RECT kNotice = {18, 52, 128, 67};
    constexpr COLORREF kRed = RGB(255, 0, 0);
    Radio radio(handset);
    Tune(radio);
    Set(L"EnableMute", 1);
    const auto shown = [&] { return test::PixelsOf(test::PictureOf(radio, kNotice), kRed) > 0; };
    EXPECT_FALSE(shown());
    handset.WriteBand(Band(10));
    ASSERT_TRUE(WaitFor(shown));
    RedrawWindow(radio.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    ASSERT_TRUE(WaitFor([&] { return !GetUpdateRect(radio.Window(), nullptr, FALSE); }));
    ASSERT_TRUE(WaitForRounds(3));
    EXPECT_TRUE(WaitFor(shown)) << "silent, and nothing says why";
    handset.WriteBand(Band(45));
    EXPECT_TRUE(WaitFor([&] { return !shown(); }));
}

TEST_F(Monitor, ARadioThatClosesWhileItIsMutedForAWeakSignalLeavesTheVolumeAsItWas) {
    Radio radio(handset);
    Tune(radio);
    Set(L"EnableMute", 1);
    handset.WriteBand(Band(5));
    ASSERT_TRUE(WaitForTrace("FM: === Mute (for low signal)\r\n"));
    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(radio.WaitUntilGone());
    const auto calls = TunerCommands();
    const std::vector<std::string> last(calls.end() - 5, calls.end());
    EXPECT_THAT(last, ElementsAre("SetSpeaker 0 -> 0", "SetMute 0 -> 0", "SetVolume 50 -> 0", "Close -> 0",
                                  "Release -> 0"));
}

TEST_F(Monitor, TheRadioHopsToTheStrongestAlternativeAndSaysSo) {
    Radio radio(handset);
    Tune(radio);
    ASSERT_TRUE(WaitForAlternatives("KORA ONE"));
    Set(L"EnableAFAutoSwitch", 1);
    const std::size_t before = handset.TunerCalls().size();
    handset.WriteBand(Band(10));
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(handset.Trace(), HasSubstr("\nCurrent MAX Frequency: 10340\n"));
    EXPECT_THAT(TunerCommands(before),
                ElementsAre("GetAFCount -> 0: 2", "SetMute 1 -> 0", "GetAFItem 0 -> 0: 101.1",
                            "GetAFItem 1 -> 0: 103.4", "SetChannel 10110 -> 0", "SetChannel 10340 -> 0",
                            "SetChannel 10340 -> 0", "SetMute 0 -> 0"));
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(WaitFor([&] { return radio.Box(L"FM") == nullptr; }));
    EXPECT_TRUE(WaitForLevel(50));
}

TEST_F(Monitor, AWindowInTheBackIsNotPolledForUntilItComesToTheFront) {
    Radio radio(handset);
    Tune(radio);
    radio.Send(WM_ACTIVATE, WA_INACTIVE);
    const int before = Rounds();
    EXPECT_FALSE(WaitFor([&] { return Rounds() > before + 1; }, 8000 / static_cast<DWORD>(m_rate)));
    radio.Send(WM_ACTIVATE, WA_ACTIVE);
    EXPECT_TRUE(WaitForRounds(2));
}

TEST_F(Monitor, AFaultOfTheTunerInEachOfItsOperationsInTurnNeverEndsTheRadio) {
    NEEDS_THE_SIMULATED_BAND("alternatives that are known where no data come in");
    Radio radio(handset);
    Tune(radio);
    Set(L"EnableMute", 1);
    ASSERT_TRUE(WaitFor([&] { return Count(handset.TunerCalls(), "GetPTYText -> 0") > 0; }));

    struct Case {
        const wchar_t* operation;
        int level;
        std::uint32_t hops;
    };
    // A level at which a round comes to the operation.
    constexpr Case kCases[] = {{L"GetSignal", 45, 0},  {L"GetStereo", 45, 0}, {L"GetRDSData", 45, 0},
                               {L"GetPTYText", 45, 0}, {L"GetVolume", 10, 0}, {L"SetVolume", 45, 0},
                               {L"GetAFCount", 10, 1}, {L"GetAFItem", 10, 1}, {L"SetChannel", 10, 1},
                               {L"SetMute", 10, 1}};
    int faults = 0;
    for (const Case& row : kCases) {
        SCOPED_TRACE(std::string(row.operation, row.operation + wcslen(row.operation)));
        handset.SetState(L"Fault", L"crash:" + std::wstring(row.operation));
        Set(L"EnableAFAutoSwitch", row.hops);
        handset.WriteBand(Band(row.level, 8, 9));
        ++faults;
        ASSERT_TRUE(WaitAnswering(
            radio, [&] { return TraceCount("FM: *** Exception at Main_threadProc") == faults; }));
        handset.SetState(L"Fault", L"");
        const int before = Rounds();
        ASSERT_TRUE(WaitAnswering(radio, [&] { return Rounds() >= before + 3; }));
        EXPECT_EQ(TraceCount("FM: *** Exception at Main_threadProc"), faults);
    }
    Set(L"EnableAFAutoSwitch", 0);
    handset.WriteBand(Band(45));
    // A round that was on its way may have posted one more notice. While its box is open keys have no effect:
    // the first that comes through stands behind it.
    const int rounds = Rounds();
    ASSERT_TRUE(WaitAnswering(radio, [&] { return Rounds() >= rounds + 2; }));
    const int keys = KeysTaken();
    ASSERT_TRUE(WaitAnswering(radio, [&] {
        radio.Key(VK_F5);
        return WaitFor([&] { return KeysTaken() > keys; }, 200);
    }));
    radio.Type("875");
    EXPECT_TRUE(WaitForCall("SetChannel 8750 -> 0"));
    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitAnswering(radio, [&] { return !radio.Runs(); }));
    EXPECT_EQ(radio.ExitCode(), 0u);
}

TEST_F(Monitor, WithTheRDSTextsSwitchedOffTheTunerIsNotAskedForThem) {
    Set(L"EnableRDSPSPTY", 0);
    Radio radio(handset);
    Tune(radio);
    ASSERT_TRUE(WaitForRounds(3));
    EXPECT_EQ(Count(handset.TunerCalls(), "GetRDSData"), 0);
    Set(L"EnableRDSPSPTY", 1);
    EXPECT_TRUE(WaitFor([&] { return Count(handset.TunerCalls(), "GetRDSData") > 0; }));
}

}  // namespace
