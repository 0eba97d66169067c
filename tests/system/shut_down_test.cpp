// Closing: the radio leaves the tuner as it found it, in a fixed order, whatever state it is in.
#include "resources/resource_ids.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr UINT kHeadsetChanged = 0xA401;

class ShutDown : public test::RadioTest {
  protected:
    void ExpectCleanEnd(const Radio& radio) {
        ASSERT_TRUE(radio.WaitUntilGone());
        EXPECT_EQ(radio.ExitCode(), 0u);
        EXPECT_THAT(handset.Trace(), HasSubstr("FM: Program Terminated.\n"));
        const auto calls = TunerCommands();
        ASSERT_GE(calls.size(), 4u);
        const std::vector<std::string> last(calls.end() - 4, calls.end());
        EXPECT_THAT(last, ElementsAre("SetSpeaker 0 -> 0", "SetMute 0 -> 0", "Close -> 0", "Release -> 0"));
    }
};

TEST_F(ShutDown, LoudspeakerOffMuteOffCloseAndReleaseComeInThisOrder) {
    Radio radio(handset);
    radio.WaitUntilShown();
    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    ExpectCleanEnd(radio);
}

TEST_F(ShutDown, TheExitCommandTracesAndCloses) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(static_cast<WORD>(IDC_EXIT));
    ExpectCleanEnd(radio);
    EXPECT_THAT(handset.Trace(), HasSubstr("== CLOSE FM ==\r\n"));
}

TEST_F(ShutDown, TheRadioClosesWhileItsWindowIsInactive) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Send(WM_ACTIVATE, WA_INACTIVE);
    ASSERT_TRUE(WaitForTrace("***WA_INACTIVE***\n"));
    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    ExpectCleanEnd(radio);
}

TEST_F(ShutDown, APulledHeadsetWarnsAndClosesTwoSecondsLaterEvenIfTheBoxIsStillOpen) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const ULONGLONG start = GetTickCount64();
    handset.PlugHeadset(false);
    ASSERT_NE(radio.WaitForBox(L"WARNING"), nullptr);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_GE(GetTickCount64() - start, 1900u);
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: === Headset off ===\r\n"));
    EXPECT_THAT(handset.Console(), HasSubstr("Headset is turn off and to Close FM\n"));
}

TEST_F(ShutDown, APluggedHeadsetIsOnlyTraced) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Send(kHeadsetChanged, 1);
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: === Headset on ===\r\n"));
    EXPECT_EQ(radio.Box(nullptr), nullptr);
}

}  // namespace
