// The tuned frequency on the main screen.
#include "tuner/frequency_display.h"

#include <cwchar>

#include "shell/settings_key.h"
#include "tests/support/device_settings.h"
#include "tests/support/unused_root.h"
#include "tests/unit/tuner/tuner_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FrequencyDisplay : public TunerTest {
  protected:
    // The selected list has one channel, "One", of that value.
    void StoreOne(DWORD channel) const {
        WriteSelectedGroup(L"Mine");
        PropRecord record = {};
        wcscpy(record.szCountryName, L"Mine");
        wcscpy(record.szPropRecord_ChannelName, L"One");
        record.dwPropRecord_ChannelValue = channel;
        ASSERT_NE(state->m_ChannelDB.CEDB_InsertRecord(record), 0u);
    }
};

TEST_F(FrequencyDisplay, ShowsTheTunedFrequencyAndUnknownForOneThatIsNotStored) {
    device.channel = 10230;
    RefreshFrequencyDisplay(*state);
    EXPECT_THAT(device.Calls(), ElementsAre("GetChannel"));
    EXPECT_THAT(Shown(), ElementsAre(ShownText{TEXT_FREQUENCY, L"102.3 MHz"},
                                     ShownText{TEXT_CHANNEL_NAME, L"Unknown"}));
}

TEST_F(FrequencyDisplay, ShowsTheNameUnderWhichTheSelectedGroupStoresTheFrequency) {
    const test::DeviceSettings settings;
    const test::UnusedRoot root;
    ASSERT_NO_FATAL_FAILURE(StoreOne(9850));
    device.channel = 9850;
    RefreshFrequencyDisplay(*state);
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"98.5 MHz");
    EXPECT_EQ(LastShown(TEXT_CHANNEL_NAME), L"One");
    device.channel = 9860;
    RefreshFrequencyDisplay(*state);
    EXPECT_EQ(LastShown(TEXT_CHANNEL_NAME), L"Unknown");
    DeleteFileW(L"\\KORA.vol");
}

TEST_F(FrequencyDisplay, ATunerThatDoesNotAnswerHasNoFrequencyAndNoNameWhateverIsStored) {
    const test::DeviceSettings settings;
    const test::UnusedRoot root;
    ASSERT_NO_FATAL_FAILURE(StoreOne(1));
    device.results["GetChannel"] = E_FAIL;
    RefreshFrequencyDisplay(*state);
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"0.0 MHz");
    EXPECT_EQ(LastShown(TEXT_CHANNEL_NAME), L"Unknown");
    DeleteFileW(L"\\KORA.vol");
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
