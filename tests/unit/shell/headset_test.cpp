// The headset that is pulled while the radio runs.
#include "shell/headset.h"

#include "resources/resource_ids.h"
#include "tests/unit/recording/message_boxes.h"
#include "tests/unit/shell/asked_times.h"
#include "tests/unit/shell/shell_test.h"

namespace {

using test::TraceOf;

class Headset : public test::ShellTest {
  protected:
    ~Headset() override { KillTimer(window, TIMER_HEADSET_OFF); }
    test::MessageBoxes boxes;
    test::AskedTimes asked;
};

TEST_F(Headset, WhenItIsPulledTheRadioWarnsAndHasTwoSecondsLeft) {
    EXPECT_EQ(TraceOf([this] { OnHeadsetChanged(window, 0); }), "FM: === Headset off ===\r\n");
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Shown()[0].caption, L"WARNING");
    EXPECT_THAT(asked.timers_ms, testing::ElementsAre(2000u));
}

TEST_F(Headset, WhenItIsPluggedInNothingIsAskedOfTheClockAndNoBoxComes) {
    EXPECT_EQ(TraceOf([this] { OnHeadsetChanged(window, 1); }), "FM: === Headset on ===\r\n");
    EXPECT_TRUE(boxes.Shown().empty());
    EXPECT_TRUE(asked.timers_ms.empty());
}

}  // namespace
