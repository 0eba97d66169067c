// What the elements of the main screen do.
#include "skin/skin_access.h"
#include "tests/unit/tuner/tuner_test.h"

namespace {

using test::WaitFor;
using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kOff = 0;
constexpr int kOn = 2;

class Controls : public TunerTest {};

// --- Tuning
// --------------------------------------------------------------------------------------------------

TEST_F(Controls, SteppingDownFrom87Point50AsksTheDeviceFor87Point40) {
    device.channel = 8750;
    device.results["SetChannel"] = E_INVALIDARG;  // as a device does outside its range
    Repeat(SKIN_STEP_DOWN);
    EXPECT_THAT(device.Calls(), ElementsAre("GetChannel", "SetChannel 8740", "GetChannel"));
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"87.5 MHz");
}

TEST_F(Controls, SteppingUpFrom108AsksTheDeviceFor108Point1) {
    device.channel = 10800;
    Repeat(SKIN_STEP_UP);
    EXPECT_THAT(device.Calls(), ElementsAre("GetChannel", "SetChannel 10810", "GetChannel"));
}

TEST_F(Controls, EveryTickOfAStepButtonMovesATenthOfAMegahertz) {
    device.channel = 9850;
    Repeat(SKIN_STEP_UP);
    Repeat(SKIN_STEP_UP);
    Repeat(SKIN_STEP_DOWN);
    EXPECT_EQ(device.channel, 9860U);
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"98.6 MHz");
}

TEST_F(Controls, SeekButtonsSeekUnderTheWaitCursorAndShowWhereTheyStopped) {
    device.stations = {10110, 8760};
    std::vector<HCURSOR> cursors;
    device.onCall = [&](const std::string&) { cursors.push_back(GetCursor()); };
    Repeat(SKIN_SEEK_UP);
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"101.1 MHz");
    EXPECT_EQ(GetCursor(), nullptr);
    Repeat(SKIN_SEEK_DOWN);
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"87.6 MHz");
    EXPECT_EQ(GetCursor(), nullptr);
    EXPECT_THAT(device.Calls(), ElementsAre("SeekNext", "GetChannel", "SeekPrev", "GetChannel"));
    EXPECT_THAT(cursors, AllOf(SizeIs(4), Each(LoadCursorW(nullptr, IDC_WAIT))));
}

TEST_F(Controls, ASeekThatFindsNothingShowsTheTunedFrequency) {
    device.channel = 9850;
    Repeat(SKIN_SEEK_UP);
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"98.5 MHz");
}

TEST_F(Controls, AClickOnASeekOrStepButtonDoesNothing) {
    for (const int id : {SKIN_SEEK_DOWN, SKIN_SEEK_UP, SKIN_STEP_DOWN, SKIN_STEP_UP}) {
        EXPECT_EQ(test::TraceOf([&] { Click(id); }), "");
    }
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(Controls, AHeldSeekButtonOfTheRealSkinSeeksAgainAndAgain) {
    device.stations = {8800, 8900, 9000};
    Press(SKIN_SEEK_UP);
    EXPECT_TRUE(WaitFor([&] { return device.stations.empty(); }));
    Lift(SKIN_SEEK_UP);
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"90.0 MHz");
}

// --- Volume
// --------------------------------------------------------------------------------------------------

TEST_F(Controls, ASliderAtItsMaximumGivesVolume100WhateverTheSlidersRange) {
    for (const int track : {19, 25, 80, 118, 240, 1018}) {
        SkinSlider& slider = state->m_skin.pSliders[0];
        slider.portrait.track.cx = slider.landscape.track.cx = track;
        const int range = GetSliderMax(state->m_skin, SKIN_VOLUME);
        ASSERT_EQ(range, track - slider.portrait.cxThumb);
        device.volume = 0;
        SendMessageW(window, WM_SKIN_SLIDER, SKIN_VOLUME, range);
        EXPECT_EQ(device.volume, 100U) << track;
    }
}

TEST_F(Controls, EveryPositionOfTheSliderSetsItsShareOfAHundredAndIsTraced) {
    const int range = GetSliderMax(state->m_skin, SKIN_VOLUME);
    for (int position = 0; position <= range; ++position) {
        const std::string expected = std::to_string(100 * position / range);
        const std::string trace =
            test::TraceOf([&] { SendMessageW(window, WM_SKIN_SLIDER, SKIN_VOLUME, position); });
        ASSERT_EQ(trace, "FM: User SetVolume to " + expected + "\n");
        ASSERT_EQ(std::to_string(device.volume), expected);
    }
}

TEST_F(Controls, ASliderThatTheSkinDoesNotHaveSetsNothing) {
    SendMessageW(window, WM_SKIN_SLIDER, 999, 10);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(Controls, OnlyTheLowWordOfTheControlCounts) {
    SendMessageW(window, WM_SKIN_SLIDER, 0x50000 | SKIN_VOLUME, 0);
    SendMessageW(window, WM_SKIN_REPEAT, 0x70000 | SKIN_STEP_UP, 0);
    EXPECT_THAT(device.Calls(), ElementsAre("SetVolume 0", "GetChannel", "SetChannel 8760", "GetChannel"));
}

// --- Output
// --------------------------------------------------------------------------------------------------

TEST_F(Controls, TheSelectorOnTheLoudspeakerLeavesBluetoothAndSwitchesTheSpeakerOn) {
    state->m_BTInUse = TRUE;
    const std::string trace = test::TraceOf([&] { ClickToggle(SKIN_OUTPUT, kOn); });
    EXPECT_THAT(device.Calls(), ElementsAre("SetBTAudio 0", "SetSpeaker 1"));
    EXPECT_EQ(trace, "FM: SpeakerOn = 0\n");
    EXPECT_TRUE(state->m_bSpeakerSelected);
    EXPECT_FALSE(state->m_BTInUse);
    EXPECT_EQ(g_app.SpeakerOn, 1);
}

TEST_F(Controls, TheSelectorOnTheHeadsetSwitchesTheSpeakerOff) {
    ClickToggle(SKIN_OUTPUT, kOn);
    device.ForgetCalls();
    ClickToggle(SKIN_OUTPUT, kOff);
    EXPECT_THAT(device.Calls(), ElementsAre("SetBTAudio 0", "SetSpeaker 0"));
    EXPECT_FALSE(state->m_bSpeakerSelected);
}

TEST_F(Controls, TheSelectorInAnOddStateSwitchesTheSpeakerOnWithoutSelectingIt) {
    ClickToggle(SKIN_OUTPUT, 1);
    EXPECT_THAT(device.Calls(), ElementsAre("SetBTAudio 0", "SetSpeaker 1"));
    EXPECT_FALSE(state->m_bSpeakerSelected);
}

// --- Mute
// ----------------------------------------------------------------------------------------------------

TEST_F(Controls, TheMuteToggleMutesAndUnmutes) {
    ClickToggle(SKIN_MUTE, kOn);
    EXPECT_TRUE(state->m_bMuted);
    ClickToggle(SKIN_MUTE, kOff);
    EXPECT_FALSE(state->m_bMuted);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1", "SetMute 0"));
}

TEST_F(Controls, MutingWhileTheLoudspeakerIsOnSwitchesItOffBeforeAndOnAgainAfterTheMute) {
    ClickToggle(SKIN_OUTPUT, kOn);
    device.ForgetCalls();
    const auto start = std::chrono::steady_clock::now();
    ClickToggle(SKIN_MUTE, kOn);
    EXPECT_THAT(device.Calls(), ElementsAre("SetSpeaker 0", "SetMute 1", "SetSpeaker 1"));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(425))
        << "30 and 400 ms of pauses";
}

TEST_F(Controls, UnmutingWithTheLoudspeakerSelectedSwitchesItOnOnceMore) {
    ClickToggle(SKIN_OUTPUT, kOn);
    ClickToggle(SKIN_MUTE, kOn);
    device.ForgetCalls();
    ClickToggle(SKIN_MUTE, kOff);
    EXPECT_THAT(device.Calls(), ElementsAre("SetSpeaker 0", "SetMute 0", "SetSpeaker 1", "SetSpeaker 1"));
}

TEST_F(Controls, UnmutingWithBluetoothInUseRestoresTheBluetoothRouteRatherThanTheLoudspeaker) {
    state->m_BTInUse = TRUE;
    state->m_bSpeakerSelected = TRUE;
    ClickToggle(SKIN_MUTE, kOff);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 0", "SetBTAudio 1"));
}

TEST_F(Controls, MutingWithBluetoothInUseTakesTheSoundOffTheLink) {
    state->m_BTInUse = TRUE;
    ClickToggle(SKIN_MUTE, kOn);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1", "SetBTAudio 0"));
    EXPECT_TRUE(state->m_BTInUse);
}

TEST_F(Controls, TheMuteToggleInAnotherStateIsIgnored) {
    ClickToggle(SKIN_MUTE, 1);
    ClickToggle(SKIN_MUTE, 3);
    EXPECT_THAT(device.Calls(), IsEmpty());
    EXPECT_FALSE(state->m_bMuted);
}

TEST_F(Controls, ATapOnTheRealMuteToggleMutesAndASecondOneUnmutes) {
    Press(SKIN_MUTE);
    Lift(SKIN_MUTE);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1"));
    Press(SKIN_MUTE);
    Lift(SKIN_MUTE);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1", "SetMute 0"));
}

TEST_F(Controls, ATapOnTheRealSelectorSwitchesTheLoudspeakerOnAndASecondOneOff) {
    Press(SKIN_OUTPUT);
    Lift(SKIN_OUTPUT);
    EXPECT_EQ(g_app.SpeakerOn, 1);
    Press(SKIN_OUTPUT);
    Lift(SKIN_OUTPUT);
    EXPECT_EQ(g_app.SpeakerOn, 0);
}

// --- The rest
// ------------------------------------------------------------------------------------------------

TEST_F(Controls, AnUnknownControlOrMessageGives0AndDoesNothing) {
    EXPECT_EQ(state->OnControl(window, WM_SKIN_CLICK, 12345, 0), 0);
    EXPECT_EQ(state->OnControl(window, WM_SKIN_REPEAT, SKIN_MUTE, 0), 0);
    EXPECT_EQ(state->OnControl(window, WM_SKIN_SETPOS, SKIN_VOLUME, 5), 0);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(Controls, TheControlHandlerIsTheFirstVirtualOperationOfTheMainState) {
    // The window procedure of another build reaches it by its place.
    using Handler = LRESULT (*)(CMainState*, HWND, UINT, WPARAM, LPARAM);
    const auto table = *reinterpret_cast<Handler* const*>(state.get());
    EXPECT_EQ(table[0](state.get(), window, WM_SKIN_REPEAT, SKIN_STEP_UP, 0), 0);
    EXPECT_THAT(device.Calls(), Contains("SetChannel 8760"));
}

}  // namespace
