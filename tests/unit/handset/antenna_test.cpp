// The antenna as the command line chooses it, and the ether that it starts.
#include "tests/support/stick_client.h"

#include <algorithm>

#include "handset/controls/encoding.h"
#include "handset/service/ether_service.h"
#include "handset/state/handset_state.h"
#include "handset/state/reception_state.h"
#include "tests/support/wait.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

class AntennaVerb : public HandsetTest {
  protected:
    ~AntennaVerb() override { StopEther(); }

    bool Says(const std::wstring& text) {
        console_.lines.clear();
        Run({L"antenna"});
        return console_.Said().find(text) != std::wstring::npos;
    }
    bool Complains(const Arguments& words, const std::wstring& text) {
        console_.errors.clear();
        return Run(words) == kBadUsage && console_.Complained().find(text) != std::wstring::npos;
    }
};

TEST_F(AntennaVerb, IsTheSimulatedBandAtFirst) {
    EXPECT_TRUE(Says(L"antenna    the simulated band\n"));
    EXPECT_TRUE(Says(L"reception  none: the radio does not play\n"));
}

TEST_F(AntennaVerb, ChoosesAServerWithAllThatItIsToDo) {
    EXPECT_EQ(Run({L"antenna", L"rtl_tcp:attic:4711", L"gain", L"12", L"ppm", L"-7", L"deemphasis", L"75",
                   L"bias", L"on"}),
              kDone);
    const handset::AntennaChoice choice = handset::ChosenAntenna();
    EXPECT_EQ(choice.antenna, L"rtl_tcp:attic:4711");
    EXPECT_EQ(choice.gain, 12u);
    EXPECT_EQ(choice.correction_ppm, -7);
    EXPECT_EQ(choice.deemphasis_us, 75u);
    EXPECT_TRUE(choice.bias);
    EXPECT_TRUE(Says(L"antenna    rtl_tcp:attic:4711, gain step 12, -7 ppm, 75 µs, bias tee on\n"));
    Run({L"status"});
    EXPECT_NE(console_.Said().find(L"Antenna       rtl_tcp:attic:4711, gain step 12"), std::wstring::npos);
}

TEST_F(AntennaVerb, ASettingAloneLeavesTheAntennaAsItIs) {
    Run({L"antenna", L"rtl_tcp", L"gain", L"3"});
    EXPECT_EQ(Run({L"antenna", L"gain", L"auto"}), kDone);
    EXPECT_EQ(handset::ChosenAntenna().antenna, L"rtl_tcp");
    EXPECT_EQ(handset::ChosenAntenna().gain, handset::kAutomaticGain);
}

TEST_F(AntennaVerb, SaysWhatItDoesNotUnderstandAndChangesNothing) {
    EXPECT_TRUE(Complains({L"antenna", L"quark"}, L"\"quark\" is no antenna"));
    EXPECT_TRUE(Complains({L"antenna", L"rtl_tcp:attic:99999"}, L"\"99999\" is no port"));
    EXPECT_TRUE(Complains({L"antenna", L"rtl_tcp", L"gain", L"loud"}, L"\"loud\" is no gain"));
    EXPECT_TRUE(Complains({L"antenna", L"rtl_tcp", L"gain"}, L"behind \"gain\" a value is wanted"));
    EXPECT_TRUE(Complains({L"antenna", L"rtl_tcp", L"ppm", L"1001"}, L"\"1001\" is no correction"));
    EXPECT_TRUE(Complains({L"antenna", L"rtl_tcp", L"ppm", L"-"}, L"\"-\" is no correction"));
    EXPECT_TRUE(Complains({L"antenna", L"rtl_tcp", L"deemphasis", L"60"}, L"\"60\" is no de-emphasis"));
    EXPECT_TRUE(Complains({L"antenna", L"rtl_tcp", L"bias", L"1"}, L"\"1\" is neither"));
    EXPECT_TRUE(Complains({L"antenna", L"rtl_tcp", L"squelch", L"1"}, L"\"squelch\" is none of"));
    EXPECT_TRUE(Complains({L"antenna", L"file:Z:\\no\\such.cu8"}, L"there is no file Z:\\no\\such.cu8"));
    EXPECT_TRUE(Says(L"antenna    the simulated band\n"));
    EXPECT_EQ(handset::ChosenAntenna(), handset::AntennaChoice());
}

TEST_F(AntennaVerb, AFileIsRememberedWithItsWholePath) {
    const std::wstring file = home_ + L"\\air.cu8";
    ASSERT_TRUE(WriteWholeFile(file, "samples"));
    wchar_t before[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, before);
    SetCurrentDirectoryW(home_.c_str());
    EXPECT_EQ(Run({L"antenna", L"file:air.cu8;rate=1920000;form=cu8"}), kDone);
    SetCurrentDirectoryW(before);
    EXPECT_EQ(handset::ChosenAntenna().antenna, L"file:" + file + L";rate=1920000;form=cu8");
}

TEST_F(AntennaVerb, ShowsWhatTheRadioReceives) {
    handset::ReceptionState state;
    state.source = L"rtl_tcp";
    state.condition = L"plays";
    state.channel_10kHz = 9850;
    state.level = 44;
    state.stereo = true;
    state.carrierToNoise_dBHz = 92.5;
    state.offset_Hz = -310;
    state.blockErrors_percent = 2;
    state.pi = 0xD3A7;
    state.trafficProgramme = state.trafficAnnouncement = true;
    ASSERT_TRUE(handset::WriteReception(state));
    EXPECT_TRUE(
        Says(L"reception  plays; 98.5 MHz, level 44, stereo, C/N0 92.5 dB-Hz, -310 Hz beside, "
             L"2 % block errors, PI D3A7, TP, TA\n"));
    handset::ClearReception();
}

TEST_F(AntennaVerb, TheEtherIsAServerThatStartsWithItAndEndsWithTheNextChoice) {
    ASSERT_EQ(Run({L"antenna", L"ether"}), kDone)
        << std::string(console_.Complained().begin(), console_.Complained().end());
    const auto port = EtherPort();
    ASSERT_TRUE(port.has_value());
    EXPECT_EQ(handset::ChosenAntenna().antenna, EtherAntenna(*port));
    EXPECT_TRUE(Says(L"antenna    the simulated ether, rtl_tcp:127.0.0.1:" + std::to_wstring(*port)));
    test::StickClient client;
    ASSERT_TRUE(client.Connect(*port));
    const auto greeting = client.Read(12);
    ASSERT_EQ(greeting.size(), 12u);
    EXPECT_EQ(std::string(greeting.begin(), greeting.begin() + 4), "RTL0");
    // Chosen once more it is the same one.
    EXPECT_EQ(Run({L"antenna", L"ether"}), kDone);
    EXPECT_EQ(EtherPort(), port);
    EXPECT_EQ(Run({L"antenna", L"band"}), kDone);
    EXPECT_FALSE(EtherPort().has_value());
    EXPECT_FALSE(client.Connect(*port));
}

TEST_F(AntennaVerb, AnEtherThatIsEndedLeavesTheSimulatedBand) {
    ASSERT_EQ(Run({L"antenna", L"ether"}), kDone);
    EXPECT_EQ(Run({L"ether", L"stop"}), kDone);
    EXPECT_TRUE(Says(L"antenna    the simulated band\n"));
}

TEST_F(AntennaVerb, AnEtherThatWasKilledLeavesTheSimulatedBand) {
    // What it leaves behind: nothing listens there.
    handset::SetStateDword(L"EtherPort", 9);
    Run({L"antenna", EtherAntenna(9)});
    EXPECT_TRUE(Says(L"antenna    the simulated band\n"));
}

TEST_F(AntennaVerb, TheEtherServesOneClientAfterTheOther) {
    const auto port = StartEther();
    ASSERT_TRUE(port.has_value());
    test::StickClient first, second;
    ASSERT_TRUE(first.Connect(*port));
    ASSERT_EQ(first.Read(12).size(), 12u);
    ASSERT_TRUE(second.Connect(*port));
    EXPECT_TRUE(second.Read(1, 300).empty());
    first.Close();
    EXPECT_EQ(second.Read(12).size(), 12u);
    EXPECT_EQ(second.Read(262144).size(), 262144u);
}

TEST_F(AntennaVerb, TheEthersSamplesComeAtTheRateThatWasAskedFor) {
    const auto port = StartEther();
    ASSERT_TRUE(port.has_value());
    test::StickClient client;
    ASSERT_TRUE(client.Connect(*port));
    ASSERT_EQ(client.Read(12).size(), 12u);
    for (const std::uint32_t rate_Hz : {1024000U, 1920000U}) {
        SCOPED_TRACE(rate_Hz);
        ASSERT_TRUE(client.Send(0x02, rate_Hz));
        // What was on its way.
        (void)client.Read(3 * 262144);
        const ULONGLONG begin_ms = GetTickCount64();
        constexpr std::size_t kBuffers = 10;
        ASSERT_EQ(client.Read(kBuffers * 262144).size(), kBuffers * 262144);
        const double seconds = static_cast<double>(GetTickCount64() - begin_ms) / 1000;
        // A loaded machine hands them on unevenly, and may lose some, but never makes them faster.
        EXPECT_GT(seconds, 0.75 * kBuffers * 131072 / rate_Hz);
        EXPECT_LT(seconds, 3.0 * kBuffers * 131072 / rate_Hz);
    }
}

TEST_F(AntennaVerb, TheEtherReceivesWhatTheBandFileSays) {
    CreateDirectoryW(root_.c_str(), nullptr);
    CreateDirectoryW(Device(L"\\Windows").c_str(), nullptr);
    const std::wstring band = Device(L"\\Windows\\band.ini");
    ASSERT_TRUE(WriteWholeFile(band, "[9850]\nlevel=45\nprogramme=tone:440\n"));
    const auto port = StartEther();
    ASSERT_TRUE(port.has_value());
    test::StickClient client;
    ASSERT_TRUE(client.Connect(*port));
    ASSERT_EQ(client.Read(12).size(), 12u);
    ASSERT_TRUE(client.Send(0x02, 1920000) && client.Send(0x0D, 16) && client.Send(0x03, 1) &&
                client.Send(0x01, 98500000));
    // At a gain of 29.7 dB a station of level 45 takes 0.3 of full scale, 38 steps.
    const auto loudest = [&] {
        const auto bytes = client.Read(262144);
        return bytes.empty() ? 0 : *std::max_element(bytes.begin(), bytes.end()) - 128;
    };
    EXPECT_TRUE(test::WaitFor([&] { return loudest() > 30; }));
    ASSERT_TRUE(WriteWholeFile(band, "[9850]\nlevel=30\nprogramme=tone:440\n"));
    EXPECT_TRUE(test::WaitFor([&] { return loudest() < 15; }));
    Run({L"signal", L"normal"});
    ASSERT_TRUE(WriteWholeFile(band, "[9850]\nlevel=45\nprogramme=tone:440\n"));
    EXPECT_TRUE(test::WaitFor([&] { return loudest() > 30; }));
    // The switch that weakens the band weakens it here too.
    EXPECT_EQ(Run({L"signal", L"20"}), kDone);
    EXPECT_TRUE(test::WaitFor([&] { return loudest() < 15; }));
}

TEST_F(AntennaVerb, APortThatIsTakenIsSaid) {
    const auto port = StartEther();
    ASSERT_TRUE(port.has_value());
    // Another handset's, which would share nothing but the machine.
    SetEnvironmentVariableW(L"KORA_STATEKEY", (stateKey_ + L" other").c_str());
    EXPECT_EQ(Run({L"ether", L"port", std::to_wstring(*port)}), kFailed);
    SetEnvironmentVariableW(L"KORA_STATEKEY", stateKey_.c_str());
    EXPECT_NE(console_.Complained().find(L"port " + std::to_wstring(*port) + L" is in use"),
              std::wstring::npos);
}

TEST_F(AntennaVerb, TheEthersArgumentsAreChecked) {
    EXPECT_TRUE(Complains({L"ether", L"port", L"70000"}, L"\"port 70000\" was given"));
    EXPECT_TRUE(Complains({L"ether", L"crystal"}, L"\"crystal\" was given"));
    EXPECT_TRUE(Complains({L"ether", L"crystal", L"5000"}, L"\"crystal 5000\" was given"));
    EXPECT_TRUE(Complains({L"ether", L"buffer", L"16385"}, L"\"buffer 16385\" was given"));
}

}  // namespace
}  // namespace panel
