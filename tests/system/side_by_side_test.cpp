// Two handsets on one desktop, each with its own radio.
#include "tests/system/radio_test.h"

namespace {

using test::HandsetUnderTest;
using test::Radio;
using test::WaitFor;

class SideBySide : public test::RadioTest {};

TEST_F(SideBySide, EachHandsetHasItsOwnRadioAndClosesThatOneAlone) {
    Radio first(handset);
    first.WaitUntilShown();
    HandsetUnderTest other;
    Radio second(other);
    second.WaitUntilShown();
    EXPECT_TRUE(first.Runs());
    EXPECT_EQ(test::RunProgram(L"handset.exe", L"stop"), 0u);
    EXPECT_TRUE(second.WaitUntilGone());
    EXPECT_TRUE(first.Runs());
    // A recording that is due takes the place of its own handset's radio only.
    Radio booked(other, L"-Rec -Channel 9850 -Duration 60");
    booked.WaitUntilShown();
    EXPECT_TRUE(first.Runs());
    EXPECT_TRUE(IsWindow(first.Window()));
}

}  // namespace
