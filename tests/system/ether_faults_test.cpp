// What goes wrong with a stick and the way to it: the radio plays on, records on, and is back soon after.
#include <algorithm>
#include <cstdlib>

#include "tests/support/heard_tone.h"
#include "tests/system/ether_test.h"

namespace {

using test::Music;
using test::Radio;
using test::WaitFor;

constexpr int kRate_Hz = 22050;
// So low that the clocks of two crystals, up to 300 ppm apart, leave it where it is looked for.
constexpr test::ToneRange kTone = {90, 130, 1};
constexpr double kBackWithin_s = 2;
constexpr double kMonitorPeriod_s = 0.7;
// The pace of a server is judged every two seconds: those in which the fault ended, and two more.
constexpr double kSaidWithin_s = 4.5;
// Heard well, in stereo. Garbage looks like a signal that is too strong, and the gain is held lower for a
// while.
constexpr int kHeard = 30;

double SecondsSince(ULONGLONG then_ms) {
    return static_cast<double>(GetTickCount64() - then_ms) / 1000;
}

// A stretch of a recording without a sound: where it begins, and how long it is.
struct Silence {
    double at_s = 0, length_s = 0;
};
Silence LongestSilence(const std::vector<std::int16_t>& samples) {
    Silence longest;
    std::size_t began = 0;
    for (std::size_t i = 0; i <= samples.size(); ++i) {
        if (i < samples.size() && std::abs(samples[i]) < 8) continue;
        const double length_s = static_cast<double>(i - began) / kRate_Hz;
        if (length_s > longest.length_s) longest = {static_cast<double>(began) / kRate_Hz, length_s};
        began = i + 1;
    }
    return longest;
}

class EtherFaults : public test::EtherTest {
  protected:
    explicit EtherFaults(std::size_t buffer_bytes = test::EtherUnderTest::kSmallBuffer_bytes)
        : EtherTest(buffer_bytes) {
        handset.WriteBand("[9850]\nlevel=45\nstereo=1\nps=KORA ONE\nprogramme=tone:110\n");
        SetFormat(2);
    }

    void Fault(const wchar_t* fault) const { handset.SetState(L"Fault", fault); }
    static void Pass(double seconds) {
        const ULONGLONG began_ms = GetTickCount64();
        WaitFor([&] { return SecondsSince(began_ms) >= seconds; });
    }

    // Records two seconds, then through some trouble, then on until the station was heard again for two
    // seconds. The trouble says for how long nothing was sent.
    template <typename Trouble>
    void RecordThrough(Trouble trouble) {
        Radio radio(handset, L"-Rec -Channel 9850");
        radio.WaitUntilShown();
        ASSERT_TRUE(WaitForLevel(43, 47));
        const std::wstring file = Music(L"98.5-0000.wav");
        TapRecord(radio);
        ASSERT_TRUE(WaitForTrace("[FM_EnCoder]iIndex : 2\n"));
        const ULONGLONG began_ms = GetTickCount64();
        ASSERT_TRUE(WaitFor([&] { return SizeOf(file) > 2 * kRate_Hz * 4; }));
        const double missing_s = trouble();
        ASSERT_TRUE(WaitForLevel(43, 47));
        Pass(2);
        TapRecord(radio);
        ASSERT_TRUE(WaitForTrace("FM: stop_record: bByPreRecord = 0\n"));
        const double recorded_s = SecondsSince(began_ms);
        const HWND box = radio.WaitForBox(L"FM");
        ASSERT_NE(box, nullptr);
        Radio::Answer(box, IDOK);
        ExpectGap(file, recorded_s, missing_s);
    }
    // As long as it was recorded, with the tone before and behind the gap and nothing in it.
    void ExpectGap(const std::wstring& file, double recorded_s, double missing_s) const {
        const test::SoundFile sound = test::ProbeSound(handset.DevicePath(file));
        EXPECT_EQ(sound.complaints, "");
        EXPECT_NEAR(sound.length_s, recorded_s, 0.5);
        const auto samples = test::DecodeSound(handset.DevicePath(file), test::Channels::kMean);
        ASSERT_GT(samples.size(), 4u * kRate_Hz);
        const Silence gap = LongestSilence(samples);
        EXPECT_GT(gap.length_s, missing_s - 0.5);
        EXPECT_LT(gap.length_s, missing_s + kBackWithin_s + kMonitorPeriod_s);
        const double end_s = gap.at_s + gap.length_s;
        for (const double middle_s : {gap.at_s - 1, std::min(end_s + 1.2, sound.length_s - 0.6)}) {
            const test::Tone tone = test::ToneAt(samples, kRate_Hz, middle_s / sound.length_s, kTone);
            EXPECT_EQ(tone.frequency_Hz, 110) << "at " << middle_s << " s of " << sound.length_s;
            EXPECT_GT(tone.share, 0.98) << "at " << middle_s << " s of " << sound.length_s;
        }
    }
};

TEST_F(EtherFaults, ARecordingGoesOnInSilenceThroughAServerThatStalls) {
    RecordThrough([this] {
        const ULONGLONG began_ms = GetTickCount64();
        Fault(L"ether-stall");
        Pass(3);
        Fault(L"");
        return SecondsSince(began_ms);
    });
}

TEST_F(EtherFaults, ARecordingGoesOnInSilenceThroughAServerThatIsGoneForAWhile) {
    RecordThrough([this] {
        const ULONGLONG began_ms = GetTickCount64();
        ether.Kill();
        Pass(2);
        ether.ComeBack();
        return SecondsSince(began_ms);
    });
}

TEST_F(EtherFaults, ABookingThatBeginsWhileTheStickIsAwayRecordsWhenItIsBack) {
    const test::ServiceProcess service(handset);
    {
        Radio radio(handset);
        radio.WaitUntilShown();
        test::BookByHand(OpenSchedule(radio), {"98.5", {}, 1, 2});
        CloseRadio(radio);
    }
    ether.Kill();
    test::Handset(L"clock 2026-11-23 09:57:58");
    const std::wstring file = Music(L"98.5-0000.wav");
    // Three seconds of nothing.
    ASSERT_TRUE(WaitFor([&] { return SizeOf(file) > 3 * kRate_Hz * 4; })) << handset.Trace();
    EXPECT_LE(Level(), 5);
    ether.ComeBack();
    ASSERT_TRUE(WaitForLevel(43, 47));
    Pass(3);
    const Radio radio(FindWindowW(L"Kora", nullptr));
    TapRecord(radio);
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    Radio::Answer(box, IDOK);
    const auto samples = test::DecodeSound(handset.DevicePath(file), test::Channels::kMean);
    const Silence before = LongestSilence(samples);
    EXPECT_LT(before.at_s, 0.1);
    EXPECT_GT(before.length_s, 2.9);
    const double length_s = static_cast<double>(samples.size()) / kRate_Hz;
    const test::Tone tone = test::ToneAt(samples, kRate_Hz, (length_s - 1) / length_s, kTone);
    EXPECT_EQ(tone.frequency_Hz, 110);
    EXPECT_GT(tone.share, 0.98);
}

struct Cause {
    const char* name;
    const wchar_t* fault;
    bool levelGoes;  // a slow way leaves holes alone
    const char* words;
    std::size_t buffer_bytes = test::EtherUnderTest::kSmallBuffer_bytes;
};
const Cause kCauses[] = {
    {"Away", L"ether-away", true, "antenna: no connection to"},
    {"Greeting", L"ether-away ether-greeting", true, "antenna: no connection to"},
    {"Stall", L"ether-stall", true, "antenna: no samples from"},
    {"Garbage", L"ether-garbage", true, ""},
    {"Slow", L"ether-slow", false, "antenna: samples come too slowly from"},
    // With buffers as large as a stick's.
    {"StickAway", L"ether-away", true, "antenna: no connection to",
     test::EtherUnderTest::kSticksBuffer_bytes},
    {"StickStall", L"ether-stall", true, "antenna: no samples from",
     test::EtherUnderTest::kSticksBuffer_bytes},
    {"StickSlow", L"ether-slow", false, "antenna: samples come too slowly from",
     test::EtherUnderTest::kSticksBuffer_bytes},
};

class EtherCause : public EtherFaults, public testing::WithParamInterface<Cause> {
  protected:
    EtherCause() : EtherFaults(GetParam().buffer_bytes) {}
};

TEST_P(EtherCause, IsSaidAndTwoSecondsAfterItsEndTheRadioPlays) {
    Radio radio(handset);
    Tune(radio);
    const auto plays = [&] { return testing::Value(AntennaWords().back(), testing::EndsWith("plays")); };
    // What is said already is not said again: a machine that was slow at first has come to itself.
    if (!GetParam().levelGoes) {
        ASSERT_TRUE(WaitFor(plays, 90000)) << handset.Trace();
    }
    // A machine that has other things to do delays some, not all.
    double soonest_s = 1000, soonestSaid_s = 1000;
    for (int time = 0; time < 3; ++time) {
        const int said = CountIn(handset.Trace(), GetParam().words);
        Fault(GetParam().fault);
        if (GetParam().levelGoes) {
            ASSERT_TRUE(WaitForLevel(0, 5)) << handset.Trace();
        }
        if (GetParam().words[0] != '\0') {
            ASSERT_TRUE(WaitFor([&] { return CountIn(handset.Trace(), GetParam().words) > said; }))
                << handset.Trace();
        }
        Fault(L"");
        const ULONGLONG ended_ms = GetTickCount64();
        const std::size_t calls = handset.TunerCalls().size();
        ASSERT_TRUE(WaitFor([&] {
            const auto now = handset.TunerCalls();
            return std::any_of(
                now.begin() + static_cast<std::ptrdiff_t>(calls), now.end(), [](const std::string& call) {
                    return call.rfind("GetSignal -> 0: ", 0) == 0 && std::atoi(call.c_str() + 16) >= kHeard;
                });
        })) << handset.Trace();
        soonest_s = std::min(soonest_s, SecondsSince(ended_ms));
        ASSERT_TRUE(WaitFor(plays)) << handset.Trace();
        soonestSaid_s = std::min(soonestSaid_s, SecondsSince(ended_ms));
    }
    EXPECT_LT(soonest_s, kBackWithin_s + kMonitorPeriod_s);
    EXPECT_LT(soonestSaid_s, kSaidWithin_s);
}

INSTANTIATE_TEST_SUITE_P(Causes, EtherCause, testing::ValuesIn(kCauses),
                         [](const testing::TestParamInfo<Cause>& row) { return row.param.name; });

}  // namespace
