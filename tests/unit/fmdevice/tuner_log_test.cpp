// The log of the device's calls.
#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

class TunerLog : public test::TunerTest {
  protected:
    void SetUp() override {
        WriteBand(
            "[9850]\nlevel=45\nstereo=1\nps=KÖRA ONE\npty=News\naf=101.1\n[9900]\nlevel=40\nps=KORA ONE\n");
        handset::SetStateString(L"TunerLog", L"\\tuner.log");
    }
    // Until the name has arrived, by calls that leave no line.
    void WaitForName() {
        handset::SetStateString(L"TunerLog", L"");
        WCHAR text[kRdsTextCapacity];
        std::int32_t kind = 0;
        EXPECT_TRUE(test::WaitFor([&] { return device_->GetRDSData(text, &kind) == S_OK; }));
        handset::SetStateString(L"TunerLog", L"\\tuner.log");
    }
    std::string Log() { return test::Bytes(handset::HostPath(L"\\tuner.log")); }
};

TEST_F(TunerLog, EveryCallIsALineWithArgumentsResultAndOutValues) {
    PowerUp();
    std::uint32_t number = 0;
    std::int32_t count = 0;
    WCHAR text[kRdsTextCapacity];
    rds_inf info{};
    device_->SetChannel(9850);
    device_->GetChannel(&number);
    device_->GetSignal(&count);
    WaitForName();
    device_->GetRDSData(text, &count);
    device_->GetStereo();
    device_->GetPTYText(text);
    device_->GetAFCount(&count);
    device_->GetAFItem(0, text);
    device_->GetRDSInfo(&info);
    device_->SetVolume(30);
    device_->GetVolume(&number);
    device_->SetMute(1);
    device_->SetSpeaker(1);
    device_->SetBTAudio(0);
    device_->SeekNext();
    WaitForName();
    device_->GetRDSData(text, &count);
    device_->SeekPrev();
    device_->SetChannel(8740);
    device_->SetChannel(8750);
    device_->GetStereo();
    device_->GetRDSData(text, &count);
    device_->GetAFCount(&count);
    device_->Close();
    device_->GetSignal(&count);
    device_->Release();
    device_ = nullptr;
    EXPECT_EQ(Log(),
              "Initialize -> 0\n"
              "SetChannel 9850 -> 0\n"
              "GetChannel -> 0: 9850\n"
              "GetSignal -> 0: 45\n"
              "GetRDSData -> 0: 4 KÖRA ONE\n"
              "GetStereo -> 0\n"
              "GetPTYText -> 0: News\n"
              "GetAFCount -> 0: 1\n"
              "GetAFItem 0 -> 0: 101.1\n"
              "GetRDSInfo -> 0: 0 1 1 1 0\n"
              "SetVolume 30 -> 0\n"
              "GetVolume -> 0: 30\n"
              "SetMute 1 -> 0\n"
              "SetSpeaker 1 -> 0\n"
              "SetBTAudio 0 -> 0\n"
              "SeekNext -> 0\n"
              "GetRDSData -> 0: 0 KORA ONE\n"
              "SeekPrev -> 0\n"
              "SetChannel 8740 -> 0x80070057\n"
              "SetChannel 8750 -> 0\n"
              "GetStereo -> 1\n"
              "GetRDSData -> 1\n"
              "GetAFCount -> 1: 0\n"
              "Close -> 0\n"
              "GetSignal -> 0x80070015\n"
              "Release -> 0\n");
}

TEST_F(TunerLog, GoesOnInAFileThatIsThereAlready) {
    test::WriteBytes(handset::HostPath(L"\\tuner.log"), "before\n");
    PowerUp();
    EXPECT_EQ(Log(), "before\nInitialize -> 0\n");
}

TEST_F(TunerLog, OnACardThatIsOutNothingIsWritten) {
    handset::SetStateString(L"TunerLog", L"\\Storage Card\\tuner.log");
    CreateDirectoryW(handset::HostPath(L"\\Storage Card").c_str(), nullptr);
    handset::SetStateDword(L"StorageCard", 0);
    PowerUp();
    EXPECT_EQ(GetFileAttributesW(handset::HostPath(L"\\Storage Card\\tuner.log").c_str()),
              INVALID_FILE_ATTRIBUTES);
    handset::SetStateDword(L"StorageCard", 1);
    device_->SetMute(0);
    EXPECT_EQ(test::Bytes(handset::HostPath(L"\\Storage Card\\tuner.log")), "SetMute 0 -> 0\n");
}

}  // namespace
