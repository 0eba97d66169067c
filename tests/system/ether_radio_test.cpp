// The radio on real signals: the stations of the band file, as a receiver stick would hear them.
#include "tests/support/heard_tone.h"
#include "tests/support/remote_list.h"
#include "tests/system/ether_test.h"

namespace {

using test::Music;
using test::Radio;
using test::RowCount;
using test::RowText;
using test::WaitFor;
using testing::Contains;
using testing::HasSubstr;

// Three stations, one of them with alternatives; levels are those of a good and of a fair reception.
constexpr char kThreeStations[] =
    "[band]\nwrap=1\n"
    "[8760]\nlevel=45\nstereo=1\nps=LOW END\nprogramme=tone:330\n"
    "[9850]\nlevel=45\nstereo=1\nps=KORA ONE\npty=News\nrt=Good morning\naf=101.1 103.4\nprogramme=tone:440\n"
    "[10790]\nlevel=35\nps=TOP END\nprogramme=tone:880\n";

class EtherRadio : public test::EtherTest {
  protected:
    explicit EtherRadio(std::size_t buffer_bytes = test::EtherUnderTest::kSmallBuffer_bytes)
        : EtherTest(buffer_bytes) {
        handset.WriteBand(kThreeStations);
    }

    // The channels to which the tuner went from 98.5 MHz, each once until it changed.
    std::vector<std::string> Stops(std::size_t from) const {
        std::vector<std::string> stops = {"9850"};
        const auto calls = handset.TunerCalls();
        for (std::size_t i = from; i < calls.size(); ++i) {
            const std::string start = "GetChannel -> 0: ";
            if (calls[i].rfind(start, 0) != 0) continue;
            const std::string channel = calls[i].substr(start.size());
            if (stops.back() != channel) stops.push_back(channel);
        }
        stops.erase(stops.begin());
        return stops;
    }
    // From 98.5 MHz holds a seek key until so many stations were stopped at.
    std::vector<std::string> SeekStops(const Radio& radio, int x, std::size_t stations) {
        // A key that was lifted before may have sought on.
        TuneAgain(radio);
        const std::size_t before = handset.TunerCalls().size();
        radio.Press(x, 250);
        WaitFor([&] { return Stops(before).size() >= stations; }, 40000);
        radio.Lift(x, 250);
        std::vector<std::string> stops = Stops(before);
        stops.resize(std::min(stops.size(), stations));
        return stops;
    }
    void TuneAgain(const Radio& radio) const {
        const int typed = Count(handset.TunerCalls(), "SetChannel 9850 -> 0");
        radio.Type("985");
        EXPECT_TRUE(WaitFor([&] { return Count(handset.TunerCalls(), "SetChannel 9850 -> 0") > typed; }));
        EXPECT_TRUE(WaitForLevel(43, 47));
    }
    // What a try shows by itself. One in which this machine was late with the samples shows nothing of the
    // radio: it is made again, up to four times.
    template <typename Try>
    auto InTime(Try try_) const {
        for (int left = 4;; --left) {
            const std::uint32_t delays = test::EtherUnderTest::Delays();
            auto result = try_();
            // The ether has counted by then.
            EXPECT_TRUE(WaitForRounds(1));
            if (left == 0 || test::EtherUnderTest::Delays() == delays) return result;
        }
    }
};

class EtherReception : public EtherRadio, public testing::WithParamInterface<test::EtherBuffers> {
  protected:
    EtherReception() : EtherRadio(GetParam().bytes) {}
};

INSTANTIATE_TEST_SUITE_P(Comes, EtherReception, testing::ValuesIn(test::kEtherBuffers),
                         [](const auto& row) { return row.param.name; });

TEST_P(EtherReception, AStationIsTunedWithItsLevelStereoAndTexts) {
    Radio radio(handset);
    Tune(radio);
    EXPECT_TRUE(WaitForCall("GetStereo -> 0"));
    EXPECT_TRUE(WaitForCall("GetRDSData -> 0: 4 KORA ONE"));
    EXPECT_TRUE(WaitForCall("GetRDSData -> 0: 1 Good morning"));
    EXPECT_TRUE(WaitFor(
        [&] { return testing::Value(handset.TunerCalls(), Contains(HasSubstr("GetPTYText -> 0: News"))); }));
    EXPECT_THAT(test::Handset(L"antenna"), HasSubstr("98.5 MHz, level 4"));
}

TEST_F(EtherRadio, AFastClockBringsTheSimulatedBandAndThePaceOfLifeTheAirAgain) {
    constexpr char kNotTheAir[] = "the clock's rate is not 1: the simulated band plays";
    const auto says = [](const char* words) {
        return test::Handset(L"antenna").find(words) != std::string::npos;
    };
    Radio radio(handset);
    Tune(radio);
    EXPECT_FALSE(says(kNotTheAir));
    test::Handset(L"clock 20");
    EXPECT_TRUE(WaitFor([&] { return says(kNotTheAir); }));
    test::Handset(L"clock 1");
    EXPECT_TRUE(WaitFor([&] { return !says(kNotTheAir) && says("98.5 MHz, level 4"); }));
}

TEST_P(EtherReception, SeekGoesBothWaysAndRoundTheEndsOfTheBand) {
    Radio radio(handset);
    Tune(radio);
    EXPECT_THAT(InTime([&] { return SeekStops(radio, 130, 3); }),
                testing::ElementsAre("10790", "8760", "9850"));
    EXPECT_THAT(InTime([&] { return SeekStops(radio, 100, 3); }),
                testing::ElementsAre("8760", "10790", "9850"));
}

TEST_P(EtherReception, TheScanFindsEveryStationAndNoOther) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_AUTOSCAN);
    HWND box = radio.WaitForBox(L"Stored channels");
    ASSERT_NE(box, nullptr);
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(WaitFor([&] { return (box = radio.Box(L"FM")) != nullptr; }, 60000));
    Radio::Answer(box, IDOK);
    std::vector<std::wstring> found;
    EXPECT_TRUE(WaitFor([&] {
        found.clear();
        for (int row = 0; row < RowCount(radio.ListView()); ++row)
            found.push_back(RowText(radio.ListView(), row, 1));
        return found == std::vector<std::wstring>{L"87.6 MHz ", L"98.5 MHz ", L"107.9 MHz "};
    })) << testing::PrintToString(found)
        << testing::PrintToString(AntennaWords());
}

TEST_F(EtherRadio, AWeakSignalMutesAndAGoodOneRestoresTheVolume) {
    Radio radio(handset);
    Tune(radio);
    Set(L"EnableMute", 1);
    handset.WriteBand("[9850]\nlevel=13\nstereo=1\nps=KORA ONE\n");
    ASSERT_TRUE(WaitForTrace("FM: === Mute (for low signal)\r\n"));
    EXPECT_LE(Level(), 15);
    handset.WriteBand("[9850]\nlevel=19\nstereo=1\nps=KORA ONE\n");
    ASSERT_TRUE(WaitForTrace("FM: === UN-Mute (for normal signal)\r\n"));
    EXPECT_GT(Level(), 15);
}

TEST_P(EtherReception, TheRadioMovesToTheStrongestAlternativeThatTheStationNames) {
    const auto band = [](int tuned) {
        return "[9850]\nlevel=" + std::to_string(tuned) +
               "\nps=KORA ONE\naf=101.1 103.4\n[10110]\nlevel=25\nps=KORA ONE\n"
               "[10340]\nlevel=40\nps=KORA ONE\n";
    };
    handset.WriteBand(band(45));
    Radio radio(handset);
    Tune(radio);
    EXPECT_EQ(InTime([&]() -> std::string {
                  Set(L"EnableAFAutoSwitch", 0);
                  handset.WriteBand(band(45));
                  TuneAgain(radio);
                  // The list of alternatives has to have come before the signal goes.
                  EXPECT_TRUE(WaitForCall("GetRDSData -> 0: 4 KORA ONE"));
                  EXPECT_TRUE(WaitForRounds(6));
                  const std::size_t before = handset.Trace().size();
                  Set(L"EnableAFAutoSwitch", 1);
                  handset.WriteBand(band(10));
                  const HWND box = radio.WaitForBox(L"FM");
                  const std::string said = handset.Trace().substr(before);
                  if (box == nullptr) return "no box after " + said;
                  Radio::Answer(box, IDOK);
                  constexpr char kBest[] = "\nCurrent MAX Frequency: ";
                  const std::size_t at = said.rfind(kBest);
                  if (at == std::string::npos) return "no best one in " + said;
                  return said.substr(at + sizeof kBest - 1, 5);
              }),
              "10340");
    EXPECT_TRUE(WaitForLevel(38, 42));
}

// Received anew, a text of this length takes more than three seconds.
TEST_F(EtherRadio, OnAnotherFrequencyOfItsNetworkAStationsTextsAreThereAtOnce) {
    const std::string text(64, 'a');
    const auto band = [&](int tuned) {
        return "[9850]\nlevel=" + std::to_string(tuned) + "\nps=KORA ONE\naf=98.5 103.4\nrt=" + text +
               "\n[10340]\nlevel=40\nps=KORA ONE\naf=98.5 103.4\nrt=" + text + "\n";
    };
    handset.WriteBand(band(45));
    Radio radio(handset);
    Tune(radio);
    ASSERT_TRUE(WaitForCall("GetRDSData -> 0: 4 KORA ONE"));
    ASSERT_TRUE(WaitForCall("GetRDSData -> 0: 1 " + text));
    ASSERT_TRUE(WaitForRounds(4));
    Set(L"EnableAFAutoSwitch", 1);
    handset.WriteBand(band(10));
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    const std::size_t before = handset.TunerCalls().size();
    Radio::Answer(box, IDOK);
    std::vector<std::string> given;
    EXPECT_TRUE(WaitFor([&] {
        given.clear();
        const auto calls = handset.TunerCalls();
        for (std::size_t i = before; i < calls.size(); ++i) {
            if (calls[i].rfind("GetRDSData -> 0: ", 0) == 0) given.push_back(calls[i]);
        }
        return given.size() >= 2;
    }));
    given.resize(std::min<std::size_t>(given.size(), 2));
    EXPECT_THAT(given, testing::ElementsAre("GetRDSData -> 0: 4 KORA ONE", "GetRDSData -> 0: 1 " + text));
}

TEST_P(EtherReception, ARecordingHoldsTheToneOfTheStation) {
    // So low that the clocks of two crystals, up to 300 ppm apart, leave it where it is looked for.
    handset.WriteBand("[9850]\nlevel=45\nstereo=1\nprogramme=tone:110\n");
    SetFormat(2);
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForLevel(43, 47));
    const std::wstring file = Music(L"98.5-0000.wav");
    ASSERT_NO_FATAL_FAILURE(RecordFor(radio, 3, file));
    ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
    const auto samples = test::DecodeSound(handset.DevicePath(file), test::Channels::kMean);
    ASSERT_GT(samples.size(), 2u * 22050);
    const test::Tone tone = test::ToneAt(samples, 22050, 0.5, {90, 130, 1});
    EXPECT_EQ(tone.frequency_Hz, 110);
    EXPECT_GT(tone.share, 0.98);
}

TEST_F(EtherRadio, ABookedRecordingReceivesItsStation) {
    const test::ServiceProcess service(handset);
    Radio radio(handset);
    radio.WaitUntilShown();
    test::BookByHand(OpenSchedule(radio), {"98.5", {}, 1, 2});
    test::Handset(L"clock 2026-11-23 09:57:58");
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    EXPECT_TRUE(WaitForLevel(43, 47));
    EXPECT_TRUE(WaitFor([&] { return SizeOf(Music(L"98.5-0000.amr")) > 2000; }));
}

TEST_F(EtherRadio, APhoneThatHasSleptReceivesAgain) {
    Radio radio(handset);
    Tune(radio);
    test::Handset(L"power suspend");
    test::Handset(L"power on");
    const int before = Rounds();
    ASSERT_TRUE(WaitFor([&] { return Rounds() > before + 2; }));
    EXPECT_TRUE(WaitForLevel(43, 47));
}

TEST_F(EtherRadio, AServerThatIsGoneLeavesNoSignalAndOneThatIsBackIsHeardAgain) {
    Radio radio(handset);
    Tune(radio);
    for (int time = 0; time < 2; ++time) {
        ether.Kill();
        EXPECT_TRUE(WaitForLevel(0, 5)) << handset.Trace();
        EXPECT_TRUE(radio.Runs());
        ether.ComeBack();
        EXPECT_TRUE(WaitForLevel(43, 47));
    }
}

TEST_F(EtherRadio, TheAntennaIsChangedWhileTheRadioPlays) {
    Radio radio(handset);
    Tune(radio);
    // Signals are limited by their samples, the simulated band is not.
    handset.WriteBand("[9850]\nlevel=90\nps=KORA ONE\n");
    test::Handset(L"antenna band");
    EXPECT_TRUE(WaitForLevel(90, 90));
    handset.WriteBand(kThreeStations);
    test::Handset(L"antenna ether");
    EXPECT_TRUE(WaitForLevel(45, 45));
    EXPECT_THAT(test::Handset(L"antenna"), HasSubstr("the simulated ether, rtl_tcp:127.0.0.1:"));
}

}  // namespace
