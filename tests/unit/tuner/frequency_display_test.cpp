// The tuned frequency on the main screen.
#include "tuner/frequency_display.h"

#include "tests/unit/tuner/tuner_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrequencyDisplay : public TunerTest {};

TEST_F(FrequencyDisplay, ShowsTheTunedFrequencyAndUnknownForOneThatIsNotStored) {
    device.channel = 10230;
    RefreshFrequencyDisplay(*state);
    EXPECT_THAT(device.Calls(), ElementsAre("GetChannel"));
    EXPECT_THAT(Shown(), ElementsAre(ShownText{TEXT_FREQUENCY, L"102.3 MHz"},
                                     ShownText{TEXT_CHANNEL_NAME, L"Unknown"}));
}

TEST_F(FrequencyDisplay, DropsTheHundredths) {
    device.channel = 8755;
    RefreshFrequencyDisplay(*state);
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"87.5 MHz");
}

TEST_F(FrequencyDisplay, ShowsNothingWithoutADevice) {
    g_app.pFMDevice = nullptr;
    RefreshFrequencyDisplay(*state);
    EXPECT_THAT(Shown(), IsEmpty());
}

}  // namespace
