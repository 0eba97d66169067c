// Each operation of the device: what it does, what it refuses, and when it is not ready.
#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

class TunerOperations : public test::TunerTest {
  protected:
    void SetUp() override {
        WriteBand(
            "[9850]\nlevel=45\nstereo=1\nprogramme=tone:440\n[9900]\nlevel=20\nstereo=1\n"
            "[9950]\nlevel=21\n");
    }
    std::uint32_t Volume() {
        std::uint32_t percent = 1000;
        EXPECT_EQ(device_->GetVolume(&percent), S_OK);
        return percent;
    }
    // Without being closed, as when its program is killed.
    void TurnOff() {
        device_->Release();
        device_ = nullptr;
    }
    void PowerUpAnew() {
        TurnOff();
        PowerUp();
    }
};

// Every operation that needs a receiver that is powered up, with its result.
std::vector<HRESULT> AllResults(IFMDevice* device) {
    std::uint32_t number = 7;
    std::int32_t count = 7;
    WCHAR text[kRdsTextCapacity] = L"x";
    rds_inf info{};
    return {device->GetVolume(&number),
            device->GetChannel(&number),
            device->SetChannel(9850),
            device->SetSpeaker(TRUE),
            device->SetBTAudio(TRUE),
            device->SetMute(TRUE),
            device->SetVolume(10),
            device->SeekNext(),
            device->SeekPrev(),
            device->GetSignal(&count),
            device->GetRDSData(text, &count),
            device->GetStereo(),
            device->GetAFCount(&count),
            device->GetAFItem(0, text),
            device->GetRDSInfo(&info),
            device->GetPTYText(text),
            device->SetChannel(1),
            device->SetVolume(101)};
}

TEST_F(TunerOperations, BeforeInitializeNothingIsReady) {
    device_ = test::CreateDevice();
    for (const HRESULT result : AllResults(device_)) EXPECT_EQ(result, test::kNotReady);
    EXPECT_EQ(device_->Close(), test::kNotReady);
}

TEST_F(TunerOperations, AfterCloseNothingIsReadyUntilTheNextInitialize) {
    PowerUp();
    ASSERT_EQ(device_->SetChannel(9850), S_OK);
    EXPECT_EQ(device_->Close(), S_OK);
    for (const HRESULT result : AllResults(device_)) EXPECT_EQ(result, test::kNotReady);
    EXPECT_EQ(device_->Close(), test::kNotReady);
    EXPECT_EQ(device_->Initialize(), S_OK);
    EXPECT_EQ(Channel(), 9850u);
}

TEST_F(TunerOperations, OutValuesAreEmptyAfterAFailure) {
    device_ = test::CreateDevice();
    std::uint32_t channel = 7;
    std::int32_t level = 7;
    WCHAR text[kRdsTextCapacity] = L"x";
    device_->GetChannel(&channel);
    device_->GetSignal(&level);
    device_->GetRDSData(text, &level);
    EXPECT_EQ(channel, 0u);
    EXPECT_EQ(level, -1);
    EXPECT_STREQ(text, L"");
}

TEST_F(TunerOperations, PoweredUpForTheFirstTimeItStandsAtTheBottomWithHalfVolume) {
    PowerUp();
    EXPECT_EQ(Volume(), 50u);
    EXPECT_EQ(Channel(), 8750u);
    EXPECT_EQ(Signal(), 3);
}

TEST_F(TunerOperations, PoweredUpAgainItHasItsStationAndItsVolumeAndIsNotMuted) {
    PowerUp();
    device_->SetChannel(9850);
    device_->SetVolume(70);
    device_->SetMute(TRUE);
    TurnOff();
    handset::SetStateString(L"SoundLog", L"\\heard.wav");
    PowerUp();
    EXPECT_EQ(Channel(), 9850u);
    EXPECT_EQ(Volume(), 70u);
    EXPECT_EQ(Signal(), 45);
    EXPECT_TRUE(test::WaitFor([] {
        const std::string bytes = test::Bytes(handset::HostPath(L"\\heard.wav"));
        return bytes.size() > 44 && bytes.find_first_not_of('\0', 44) != std::string::npos;
    }));
}

TEST_F(TunerOperations, AStationThatASeekFoundIsRememberedToo) {
    PowerUp();
    ASSERT_EQ(device_->SeekNext(), S_OK);
    PowerUpAnew();
    EXPECT_EQ(Channel(), 9850u);
}

TEST_F(TunerOperations, ARefusedChannelOrVolumeIsNotRemembered) {
    PowerUp();
    device_->SetChannel(9850);
    device_->SetVolume(70);
    EXPECT_EQ(device_->SetChannel(10801), E_INVALIDARG);
    EXPECT_EQ(device_->SetVolume(101), E_INVALIDARG);
    PowerUpAnew();
    EXPECT_EQ(Channel(), 9850u);
    EXPECT_EQ(Volume(), 70u);
}

// A silence may be that of a weak signal, which whoever is killed in it cannot take back.
TEST_F(TunerOperations, SilenceIsRememberedByOneThatIsClosedInItAndByNoOther) {
    PowerUp();
    device_->SetVolume(70);
    device_->SetVolume(0);
    EXPECT_EQ(handset::StateDword(L"TunerVolume", 0), 70u);
    EXPECT_EQ(device_->Close(), S_OK);
    EXPECT_EQ(handset::StateDword(L"TunerVolume", 1), 0u);
    EXPECT_EQ(device_->Initialize(), S_OK);
    EXPECT_EQ(Volume(), 0u);
}

TEST_F(TunerOperations, WhatIsDamagedOrOutOfRangeCountsAsNeverRemembered) {
    for (const wchar_t* odd : {L"", L"one", L"-1", L"0", L"8749", L"10801", L"4294967295", L"4294976046"}) {
        handset::SetStateString(L"TunedChannel", odd);
        PowerUp();
        EXPECT_EQ(Channel(), 8750u) << odd;
        TurnOff();
    }
    for (const wchar_t* odd : {L"", L"loud", L"-1", L"101", L"4294967295", L"4294967296"}) {
        handset::SetStateString(L"TunerVolume", odd);
        PowerUp();
        EXPECT_EQ(Volume(), 50u) << odd;
        TurnOff();
    }
}

TEST_F(TunerOperations, ASecondInitializeChangesNothing) {
    PowerUp();
    ASSERT_EQ(device_->SetChannel(9850), S_OK);
    EXPECT_EQ(device_->Initialize(), S_OK);
    EXPECT_EQ(Channel(), 9850u);
}

TEST_F(TunerOperations, ChannelsOfTheBandAreTunedAndOthersRefused) {
    PowerUp();
    for (const std::uint32_t channel : {8750u, 10800u, 9855u}) {
        EXPECT_EQ(device_->SetChannel(channel), S_OK);
        EXPECT_EQ(Channel(), channel);
    }
    for (const std::uint32_t channel : {8749u, 8740u, 10801u, 0u, 0xFFFFFFFFu}) {
        EXPECT_EQ(device_->SetChannel(channel), E_INVALIDARG);
        EXPECT_EQ(Channel(), 9855u);
    }
}

TEST_F(TunerOperations, VolumesFromZeroToHundredAreKeptAndOthersRefused) {
    PowerUp();
    std::uint32_t volume = 1;
    for (const std::uint32_t percent : {0u, 37u, 100u}) {
        EXPECT_EQ(device_->SetVolume(percent), S_OK);
        EXPECT_EQ(device_->GetVolume(&volume), S_OK);
        EXPECT_EQ(volume, percent);
    }
    EXPECT_EQ(device_->SetVolume(101), E_INVALIDARG);
    EXPECT_EQ(device_->GetVolume(&volume), S_OK);
    EXPECT_EQ(volume, 100u);
}

TEST_F(TunerOperations, StereoIsZeroOnlyForAStereoStationAboveItsThreshold) {
    PowerUp();
    const std::pair<std::uint32_t, HRESULT> kWanted[] = {
        {9850, S_OK}, {9900, S_FALSE}, {9950, S_FALSE}, {8750, S_FALSE}};
    for (const auto& [channel, stereo] : kWanted) {
        ASSERT_EQ(device_->SetChannel(channel), S_OK);
        EXPECT_EQ(device_->GetStereo(), stereo) << channel;
    }
}

TEST_F(TunerOperations, SwitchesAnswerZeroWhatTheyAreGiven) {
    PowerUp();
    for (const BOOL value : {TRUE, FALSE, -1}) {
        EXPECT_EQ(device_->SetSpeaker(value), S_OK);
        EXPECT_EQ(device_->SetBTAudio(value), S_OK);
        EXPECT_EQ(device_->SetMute(value), S_OK);
    }
}

TEST_F(TunerOperations, ANullPointerIsRefusedByEach) {
    PowerUp();
    WCHAR text[kRdsTextCapacity];
    std::int32_t kind = 0;
    EXPECT_EQ(device_->GetVolume(nullptr), E_POINTER);
    EXPECT_EQ(device_->GetChannel(nullptr), E_POINTER);
    EXPECT_EQ(device_->GetSignal(nullptr), E_POINTER);
    EXPECT_EQ(device_->GetRDSData(nullptr, &kind), E_POINTER);
    EXPECT_EQ(device_->GetRDSData(text, nullptr), E_POINTER);
    EXPECT_EQ(device_->GetAFCount(nullptr), E_POINTER);
    EXPECT_EQ(device_->GetAFItem(0, nullptr), E_POINTER);
    EXPECT_EQ(device_->GetRDSInfo(nullptr), E_POINTER);
    EXPECT_EQ(device_->GetPTYText(nullptr), E_POINTER);
}

TEST_F(TunerOperations, TheUnusedOperationSaysThatItIsNone) {
    PowerUp();
    EXPECT_EQ(device_->Reserved(), E_NOTIMPL);
}

TEST_F(TunerOperations, AllDevicesOfAProcessShareTheReceiver) {
    PowerUp();
    IFMDevice* other = test::CreateDevice();
    ASSERT_EQ(device_->SetChannel(9850), S_OK);
    std::uint32_t channel = 0;
    EXPECT_EQ(other->GetChannel(&channel), S_OK);
    EXPECT_EQ(channel, 9850u);
    EXPECT_EQ(other->Release(), 0u);
}

}  // namespace
