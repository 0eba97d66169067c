// The antenna's values and what is published of the reception.
#include "handset/state/reception_state.h"

#include <windows.h>

#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

class ReceptionValues : public testing::Test {
  private:
    const test::HandsetHere handset_{L"reception-test"};
};

TEST_F(ReceptionValues, ANewHandsetHasTheSimulatedBandAndNothingIsReceived) {
    EXPECT_EQ(handset::ChosenAntenna(), handset::AntennaChoice());
    EXPECT_FALSE(handset::ReadReception());
}

TEST_F(ReceptionValues, TheAntennaIsWhatTheStateSaysWithinItsRanges) {
    handset::SetStateString(L"Antenna", L"rtl_tcp:attic");
    handset::SetStateDword(L"AntennaGain", 12);
    handset::SetStateDword(L"AntennaPpm", static_cast<std::uint32_t>(-37));
    handset::SetStateDword(L"AntennaDeemphasis", 75);
    handset::SetStateDword(L"AntennaBias", 1);
    handset::AntennaChoice wanted{L"rtl_tcp:attic", 12, -37, 75, true};
    EXPECT_EQ(handset::ChosenAntenna(), wanted);
    handset::SetStateDword(L"AntennaPpm", 1001);
    handset::SetStateDword(L"AntennaDeemphasis", 60);
    wanted.correction_ppm = 0;
    wanted.deemphasis_us = 50;
    EXPECT_EQ(handset::ChosenAntenna(), wanted);
}

TEST_F(ReceptionValues, WhatIsWrittenIsReadUntilItIsCleared) {
    handset::ReceptionState state;
    state.source = L"rtl_tcp:attic";
    state.condition = L"plays";
    state.channel_10kHz = 9850;
    state.level = 44;
    state.stereo = true;
    state.carrierToNoise_dBHz = 92.3;
    state.offset_Hz = -1250;
    state.blockErrors_percent = 3;
    state.pi = 0xD318;
    state.trafficProgramme = true;
    state.levels[0] = 7;
    state.levels[205] = 99;
    ASSERT_TRUE(handset::WriteReception(state));
    const auto read = handset::ReadReception();
    ASSERT_TRUE(read);
    EXPECT_EQ(read->source, state.source);
    EXPECT_EQ(read->condition, state.condition);
    EXPECT_EQ(read->channel_10kHz, 9850u);
    EXPECT_EQ(read->level, 44u);
    EXPECT_TRUE(read->stereo);
    EXPECT_NEAR(read->carrierToNoise_dBHz.value_or(0), 92.3, 0.01);
    EXPECT_EQ(read->offset_Hz, -1250);
    EXPECT_EQ(read->blockErrors_percent, 3u);
    EXPECT_EQ(read->pi, 0xD318);
    EXPECT_TRUE(read->trafficProgramme);
    EXPECT_FALSE(read->trafficAnnouncement);
    EXPECT_EQ(read->levels, state.levels);
    EXPECT_EQ(read->levels[1], handset::kLevelNotSeen);

    state.pi.reset();
    state.trafficProgramme = false;
    state.trafficAnnouncement = true;
    state.offset_Hz.reset();
    state.carrierToNoise_dBHz.reset();
    state.blockErrors_percent.reset();
    ASSERT_TRUE(handset::WriteReception(state));
    const auto unknown = handset::ReadReception();
    ASSERT_TRUE(unknown);
    EXPECT_FALSE(unknown->trafficProgramme);
    EXPECT_TRUE(unknown->trafficAnnouncement);
    EXPECT_FALSE(unknown->pi || unknown->offset_Hz || unknown->carrierToNoise_dBHz ||
                 unknown->blockErrors_percent);
    handset::ClearReception();
    EXPECT_FALSE(handset::ReadReception());
}

TEST_F(ReceptionValues, WhatARadioThatIsGoneHasLeftIsNotShown) {
    ASSERT_TRUE(handset::WriteReception({}));
    ASSERT_TRUE(handset::ReadReception());
    const std::uint64_t longAgo_ms = GetTickCount64() - handset::kReceptionStale_ms - 1;
    RegSetKeyValueW(HKEY_CURRENT_USER, (handset::StateKeyPath() + L"\\Reception").c_str(), L"Written_ms",
                    REG_QWORD, &longAgo_ms, sizeof longAgo_ms);
    EXPECT_FALSE(handset::ReadReception());
}

}  // namespace
