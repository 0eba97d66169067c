// Typed digits on their whole way: from the key to the tuner, the fields of the screen and the timer.
#include "tests/unit/tuner/tuner_test.h"
#include "tuner/digit_entry.h"

namespace {

using test::WaitFor;
using testing::ElementsAre;
using testing::IsEmpty;

class DigitKeys : public TunerTest {
  protected:
    // KillTimer tells whether the timer ran, and leaves it stopped.
    bool StopRunningTimer() { return KillTimer(window, TIMER_DIGIT_ENTRY) != FALSE; }
    void Tick() { DigitEntryTimerProc(window, WM_TIMER, TIMER_DIGIT_ENTRY, 0); }
};

const ShownText kNoName = {TEXT_CHANNEL_NAME, L""};
const ShownText kUnknown = {TEXT_CHANNEL_NAME, L"Unknown"};

ShownText Frequency(const wchar_t* text) {
    return {TEXT_FREQUENCY, text};
}

TEST_F(DigitKeys, EightSevenFiveTunes8750AndShows87Point5MHzAfterTheThirdKey) {
    device.channel = 9850;
    Type("875");
    EXPECT_THAT(device.Calls(), ElementsAre("SetChannel 8750", "GetChannel"));
    EXPECT_THAT(Shown(), ElementsAre(Frequency(L"8_._"), kNoName, Frequency(L"87._"), kNoName,
                                     Frequency(L"87.5 MHz"), Frequency(L"87.5 MHz"), kUnknown));
    EXPECT_FALSE(StopRunningTimer());
}

TEST_F(DigitKeys, OneZeroEightZeroTunes10800) {
    Type("1080");
    EXPECT_THAT(device.Calls(), ElementsAre("SetChannel 10800", "GetChannel"));
    EXPECT_THAT(Shown(),
                ElementsAre(Frequency(L"1_._"), kNoName, Frequency(L"10._"), kNoName, Frequency(L"108._"),
                            Frequency(L"108.0 MHz"), Frequency(L"108.0 MHz"), kUnknown));
    EXPECT_FALSE(StopRunningTimer());
}

TEST_F(DigitKeys, OneZeroEightFiveShowsTheTunedFrequencyAgainAndDoesNotTune) {
    device.channel = 9850;
    Type("1085");
    EXPECT_THAT(device.Calls(), ElementsAre("GetChannel"));
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"98.5 MHz");
    EXPECT_EQ(g_app.digitEntry.uCount, 0U);
    for (const std::uint32_t cell : g_app.digitEntry.auDigit) EXPECT_EQ(cell, 0U);
    EXPECT_TRUE(StopRunningTimer()) << "only an entry inside the band stops the timer";
}

TEST_F(DigitKeys, ZeroEightSevenIsOutOfBandAndDoesNotTune) {
    Type("087");
    EXPECT_THAT(device.Calls(), ElementsAre("GetChannel"));
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"87.5 MHz");
}

TEST_F(DigitKeys, OneNineIsOutOfBandAtTheFourthDigit) {
    Type("190");
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"190._");
    EXPECT_THAT(device.Calls(), IsEmpty());
    Type("5");
    EXPECT_THAT(device.Calls(), ElementsAre("GetChannel"));
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"87.5 MHz");
}

TEST_F(DigitKeys, AFourthDigitAfterACommittedThreeDigitEntryStartsANewEntry) {
    Type("987");
    ForgetShown();
    Type("9");
    EXPECT_EQ(g_app.digitEntry.uCount, 1U);
    EXPECT_THAT(Shown(), ElementsAre(Frequency(L"9_._"), kNoName));
    EXPECT_TRUE(StopRunningTimer());
}

TEST_F(DigitKeys, EveryDigitAndEveryCompleteEntryIsTraced) {
    EXPECT_EQ(test::TraceOf([&] { Type("8"); }), "FM: 0:8--");
    EXPECT_EQ(test::TraceOf([&] { Type("7"); }), "FM: 1:7--");
    EXPECT_EQ(test::TraceOf([&] { Type("5"); }), "FM: 2:5--Frequency:8750\n uChannelFrequency:8750\n ");
    EXPECT_EQ(test::TraceOf([&] { Type("1080"); }),
              "FM: 0:1--FM: 1:0--FM: 2:8--FM: 3:0--Frequency:10800\n uChannelFrequency:10800\n ");
    EXPECT_EQ(test::TraceOf([&] { Type("001"); }), "FM: 0:0--FM: 1:0--FM: 2:1--Frequency: 10\n ");
}

TEST_F(DigitKeys, EveryFrequencyOfTheBandCanBeTyped) {
    for (std::uint32_t channel = 8750; channel <= 10800; channel += 10) {
        device.ForgetCalls();
        Type(std::to_string(channel / 10).c_str());
        ASSERT_THAT(device.Calls(), ElementsAre("SetChannel " + std::to_string(channel), "GetChannel"));
    }
}

TEST_F(DigitKeys, KeysThatAreNoDigitsAreIgnored) {
    for (const WPARAM key :
         {WPARAM{'0' - 1}, WPARAM{'9' + 1}, WPARAM{VK_LEFT}, WPARAM{'A'}, WPARAM{VK_NUMPAD1}}) {
        EXPECT_EQ(test::TraceOf([&] { Key(key); }), "");
    }
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_EQ(g_app.digitEntry.uCount, 0U);
    EXPECT_FALSE(state->m_bDigitSinceTick);
}

TEST_F(DigitKeys, ATickAfterADigitWaitsAndTheNextOneRefreshesAndStopsTheTimer) {
    device.channel = 10230;
    Type("87");
    ForgetShown();
    Tick();
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_FALSE(state->m_bDigitSinceTick);
    Tick();
    EXPECT_THAT(Shown(), ElementsAre(Frequency(L"102.3 MHz"), kUnknown));
    EXPECT_FALSE(StopRunningTimer());
}

TEST_F(DigitKeys, EveryDigitKeepsTheEntryOnTheScreenForOneMoreTick) {
    for (const char* digit : {"1", "0", "7"}) {
        Type(digit);
        device.ForgetCalls();
        Tick();
        EXPECT_THAT(device.Calls(), IsEmpty()) << digit;
    }
}

TEST_F(DigitKeys, ADigitTypedAfterAnAbandonedEntryContinuesTheOldEntrysPosition) {
    Type("87");
    Tick();
    Tick();
    EXPECT_EQ(g_app.digitEntry.uCount, 2U);
    device.ForgetCalls();
    Type("9");
    EXPECT_THAT(device.Calls(), ElementsAre("SetChannel 8790", "GetChannel"));
}

TEST_F(DigitKeys, ATickBeforeTheMainStateIsThereDoesNothing) {
    const HWND bare =
        CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    DigitEntryTimerProc(bare, WM_TIMER, TIMER_DIGIT_ENTRY, 0);
    DestroyWindow(bare);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(DigitKeys, AnAbandonedEntryLeavesTheScreenAtTheSecondTickOfTheTimer) {
    device.channel = 9850;
    const auto start = std::chrono::steady_clock::now();
    Type("87");
    ASSERT_TRUE(WaitFor([&] { return LastShown(TEXT_FREQUENCY) == L"98.5 MHz"; }));
    const auto passed = std::chrono::steady_clock::now() - start;
    EXPECT_GE(passed, std::chrono::milliseconds(3900)) << "two periods of 2 s";
    EXPECT_FALSE(StopRunningTimer());
}

TEST_F(DigitKeys, AFailingTunerLeavesTheTunedFrequencyOnTheScreen) {
    device.channel = 9850;
    device.results["SetChannel"] = E_FAIL;
    Type("875");
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"98.5 MHz");
}

}  // namespace
