// What a recording that begins leaves as it was, and what it locks for a keyboard: seen with stored channels.
#include "tests/system/channels_on_radio.h"

namespace {

using test::Lines;
using test::Radio;
using test::WaitFor;

class RecordingLocks : public test::ThreeChannelsOnRadio {
  protected:
    void StartRecording(const Radio& radio) const {
        radio.Tap(28, 251);
        ASSERT_TRUE(WaitForTrace("[FM_EnCoder]iIndex : 2\n"));
        ASSERT_TRUE(WaitFor([&] { return !IsWindowVisible(radio.ListView()); }));
    }
};

TEST_F(RecordingLocks, ASelectionThatIsRestingWhenTheRecordingBeginsIsTuned) {
    Radio radio(handset);
    radio.WaitUntilShown();
    PostMessageW(radio.ListView(), WM_KEYDOWN, VK_DOWN, 1);
    ASSERT_TRUE(WaitFor([&] { return test::SelectedRow(radio.ListView()) == 0; }));
    ASSERT_EQ(Count(handset.TunerCalls(), "SetChannel"), 0)
        << "the selection did not rest long enough for this test";
    StartRecording(radio);
    EXPECT_TRUE(WaitForCall("SetChannel 8760 -> 0"));
}

TEST_F(RecordingLocks, AShortcutStartsNothingWhileTheRadioRecords) {
    Radio radio(handset, L"-Rec -Channel 10050");
    radio.WaitUntilShown();
    StartRecording(radio);
    for (const int id : {IDC_SETTINGS, IDC_ADD_CURRENT, IDC_CHANNEL_LISTS, IDC_EXIT}) {
        radio.Shortcut(static_cast<WORD>(id));
        ASSERT_TRUE(WaitUntilKeysCome(radio));
        EXPECT_EQ(radio.Box(nullptr), nullptr) << id;
    }
    EXPECT_EQ(Count(Lines(handset.Trace()), "FM: stop_record"), 0);
    EXPECT_TRUE(radio.Runs());
}

}  // namespace
