// The tuner device with a real antenna's signals: a stick's server with a transmitter for its aerial.
#include "tests/unit/fmdevice/stick_server.h"

#include <atomic>
#include <thread>

#include "handset/coredll/kernel/platform_call.h"
#include "handset/state/reception_state.h"
#include "handset/transmitter/stream_format.h"
#include "tests/support/trace_capture.h"
#include "tests/unit/fmdevice/tuner_under_test.h"
#include "tests/unit/fmdevice/wav_measure.h"

namespace {

using test::AirStation;
using test::StickServer;
using test::WaitFor;

const std::vector<AirStation> kAir = {
    {98.5, 95, "KORA ONE", 1000, {101.1, 88.0, 104.0}, "Good morning"},
    {101.1, 80, "ELSE", 700, {}, ""},
    {104.0, 70, "WEAKER", 500, {}, ""},
};

// A machine that is busy with other things can send one of them in time.
const std::vector<AirStation> kOne = {kAir[0]};

class OnTheAir : public test::TunerTest {
  protected:
    void Use(const std::wstring& antenna) {
        handset::SetStateString(L"Antenna", antenna);
        if (device_ == nullptr) PowerUp();
    }
    // Asked as the radio does, so that a changed antenna is seen.
    std::wstring Condition() {
        std::uint32_t channel = 0;
        device_->GetChannel(&channel);
        const auto state = handset::ReadReception();
        return state ? state->condition : L"";
    }
    bool Becomes(const std::wstring& condition) {
        return WaitFor([&] { return Condition() == condition; });
    }
    bool Plays() {
        return Becomes(L"plays") &&
               WaitFor([&] { return device_->SetChannel(9850) == S_OK && Signal() > 30; });
    }
    // The text of a kind, when it comes.
    std::wstring TextOfKind(std::int32_t wanted) {
        WCHAR text[kRdsTextCapacity] = L"";
        std::int32_t kind = -1;
        WaitFor([&] { return device_->GetRDSData(text, &kind) == S_OK && kind == wanted; });
        return kind == wanted ? text : L"";
    }
    test::Sound Heard() { return test::WavSound(test::Bytes(handset::HostPath(L"\\heard.wav"))); }
    bool Hears(double tone_Hz) {
        return WaitFor([&] {
            const std::string bytes = test::Bytes(handset::HostPath(L"\\heard.wav"));
            if (bytes.size() < 44 + 4 * 44100) return false;
            return test::WavSound(bytes).Tail(11025).Tone(0, tone_Hz) > 0.2;
        });
    }
    // Plays aloud, and the sound is written down.
    bool IsHeard(const StickServer& server, double tone_Hz) {
        handset::SetStateString(L"SoundLog", L"\\heard.wav");
        Use(server.Antenna());
        return Plays() && device_->SetVolume(100) == S_OK && Hears(tone_Hz);
    }
    static std::uint64_t Took(const std::function<void()>& work) {
        const std::uint64_t began_ms = GetTickCount64();
        work();
        return GetTickCount64() - began_ms;
    }
};

TEST_F(OnTheAir, AStationIsTunedWithItsLevelStereoNameTextTypeAndList) {
    StickServer server(kOne);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    EXPECT_NEAR(Signal(), 95 - 48, 4);
    EXPECT_TRUE(WaitFor([&] { return device_->GetStereo() == S_OK; }));
    EXPECT_EQ(TextOfKind(4), L"KORA ONE");
    EXPECT_EQ(TextOfKind(1), L"Good morning");
    WCHAR text[kRdsTextCapacity] = L"";
    EXPECT_TRUE(WaitFor([&] { return device_->GetPTYText(text) == S_OK; }));
    EXPECT_STREQ(text, L"News");
    std::int32_t count = 0;
    EXPECT_TRUE(WaitFor([&] { return device_->GetAFCount(&count) == S_OK && count == 3; }));
    EXPECT_EQ(device_->GetAFItem(0, text), S_OK);
    EXPECT_STREQ(text, L"101.1");
    EXPECT_TRUE(WaitFor([&] {
        const auto state = handset::ReadReception();
        return state && state->pi == 0xD300 && state->channel_10kHz == 9850 && state->stereo &&
               state->level > 40 && state->blockErrors_percent.value_or(100) < 50 &&
               std::abs(state->offset_Hz.value_or(99999)) < 1000 &&
               std::abs(state->carrierToNoise_dBHz.value_or(0) - 95.0) < 4.0 && state->levels[110] > 40;
    }));
}

TEST_F(OnTheAir, EachAlternativeShowsItsOwnLevelWhenItIsTunedAndAskedAtOnce) {
    StickServer server(kAir);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    for (int round = 0; round < 2; ++round) {
        const std::pair<std::uint32_t, int> kWanted[] = {{10110, 32}, {8800, 0}, {10400, 22}, {9850, 47}};
        for (const auto& [channel, level] : kWanted) {
            ASSERT_EQ(device_->SetChannel(channel), S_OK);
            // Where nobody sends, noise has some level too.
            EXPECT_NEAR(Signal(), level, level == 0 ? 6 : 4) << channel;
        }
    }
}

TEST_F(OnTheAir, ASeekGoesFromStationToStationBothWaysAndRoundTheEnds) {
    StickServer server(kAir);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    // An empty part of the band may take more than one seek's time.
    for (const std::uint32_t station : {10110u, 10400u, 9850u, 10110u}) {
        EXPECT_TRUE(WaitFor([&] { return device_->SeekNext() == S_OK; }));
        EXPECT_EQ(Channel(), station);
    }
    for (const std::uint32_t station : {9850u, 10400u}) {
        EXPECT_TRUE(WaitFor([&] { return device_->SeekPrev() == S_OK; }));
        EXPECT_EQ(Channel(), station);
    }
    ASSERT_EQ(device_->SetChannel(9850), S_OK);
    EXPECT_TRUE(WaitFor([&] { return std::abs(Signal() - 47) <= 4; }));
}

// As a scan does it: the receiver's own thread has not yet seen the tuning when it is sent on.
TEST_F(OnTheAir, ASeekRightBehindATuningFindsTheNextStation) {
    StickServer server(kAir);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    for (int round = 0; round < 5; ++round) {
        ASSERT_EQ(device_->SetChannel(9810), S_OK);
        EXPECT_EQ(device_->SeekNext(), S_OK) << round;
        EXPECT_EQ(Channel(), 9850u) << round;
    }
}

TEST_F(OnTheAir, NoCallTakesLongerThanASecond) {
    StickServer server(kOne);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    std::int32_t level = 0;
    EXPECT_LE(Took([&] { device_->SeekNext(); }), 1200u);
    EXPECT_LE(Took([&] { device_->SetChannel(9000); }), 300u);
    EXPECT_LE(Took([&] { device_->GetSignal(&level); }), 1000u);
    server.stalled = true;
    device_->SetChannel(10500);
    EXPECT_LE(Took([&] { device_->GetSignal(&level); }), 1000u);
    EXPECT_EQ(level, 0);
    EXPECT_LE(Took([&] { device_->SeekNext(); }), 1200u);
}

TEST_F(OnTheAir, ATuningOvertakesASeek) {
    StickServer server(kOne);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    std::atomic<bool> over{false};
    HRESULT sought = S_OK;
    std::thread seeker([&] {
        sought = device_->SeekNext();
        over = true;
    });
    WaitFor([&] { return device_->SetChannel(9010) == S_OK && over; });
    seeker.join();
    EXPECT_EQ(sought, E_ABORT);
    EXPECT_EQ(Channel(), 9010u);
    ASSERT_EQ(device_->SetChannel(9850), S_OK);
    EXPECT_NEAR(Signal(), 47, 4);
}

TEST_F(OnTheAir, ATunedStationIsHeardAndTheOneBeforeIsNot) {
    StickServer server(kAir);
    ASSERT_TRUE(IsHeard(server, 1000));
    ASSERT_EQ(device_->SetChannel(10110), S_OK);
    EXPECT_TRUE(Hears(700));
    EXPECT_TRUE(WaitFor([&] { return Heard().Tail(11025).Tone(0, 1000) < 0.01; }));
}

TEST_F(OnTheAir, AServerThatIsKilledIsSaidAndPlayedAgainWithinTwoSecondsOfItsReturn) {
    auto server = std::make_unique<StickServer>(kOne);
    const std::uint16_t port = server->Port();
    test::StreamCapture capture(STD_ERROR_HANDLE);
    Use(server->Antenna());
    ASSERT_TRUE(Plays());
    server.reset();
    const std::wstring name = L"127.0.0.1:" + std::to_wstring(port);
    EXPECT_TRUE(Becomes(L"no connection to " + name + L": no server listens there"));
    EXPECT_EQ(Signal(), 0);
    EXPECT_EQ(device_->GetStereo(), S_FALSE);
    server = std::make_unique<StickServer>(kOne, port);
    const std::uint64_t took_ms = Took([&] { EXPECT_TRUE(WaitFor([&] { return Signal() > 40; })); });
    EXPECT_LE(took_ms, 2000u);
    const std::string trace = capture.Text();
    EXPECT_NE(trace.find("FM device: antenna: no connection to "), std::string::npos) << trace;
    EXPECT_NE(trace.rfind("FM device: antenna: plays\n"), std::string::npos) << trace;
}

TEST_F(OnTheAir, ANetworkThatStallsIsSaidAndItsReturnIsHeardWithinTwoSeconds) {
    StickServer server(kOne);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    server.stalled = true;
    EXPECT_TRUE(WaitFor([&] { return Condition() != L"plays"; }));
    EXPECT_TRUE(WaitFor([&] { return Signal() == 0; }));
    server.stalled = false;
    EXPECT_LE(Took([&] { EXPECT_TRUE(WaitFor([&] { return Signal() > 40; })); }), 2000u);
}

TEST_F(OnTheAir, AServerOfSomethingElseIsSaidToBeOne) {
    StickServer server(kOne);
    server.garbage = true;
    Use(server.Antenna());
    EXPECT_TRUE(Becomes(L"no connection to 127.0.0.1:" + std::to_wstring(server.Port()) +
                        L": it is no server of a stick"));
    server.garbage = false;
    EXPECT_LE(Took([&] { EXPECT_TRUE(Plays()); }), 2500u);
}

TEST_F(OnTheAir, SamplesThatComeTooSlowlyAreSaid) {
    StickServer server(kOne);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    server.repeats = true;
    server.pace_percent = 60;
    const std::wstring slow = L"samples come too slowly from 127.0.0.1:" + std::to_wstring(server.Port());
    EXPECT_TRUE(Becomes(slow));
    server.pace_percent = 100;
    EXPECT_TRUE(Becomes(L"plays"));
}

TEST_F(OnTheAir, AMachineThatCannotFollowSaysSoAndPlaysOnOnceItCan) {
    StickServer server(kOne);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    // Faster than any machine receives: what is beyond the half second that is held is lost.
    server.repeats = true;
    server.pace_percent = 10000;
    EXPECT_TRUE(Becomes(L"this machine is too slow: samples are lost"));
    server.pace_percent = 100;
    server.repeats = false;
    EXPECT_TRUE(Becomes(L"plays"));
    EXPECT_TRUE(WaitFor([&] { return Signal() > 40; }));
}

TEST_F(OnTheAir, WhatIsHeardStaysAsLongAsTheClockThroughAStall) {
    StickServer server(kOne);
    ASSERT_TRUE(IsHeard(server, 1000));
    const std::size_t before = Heard().Frames();
    const std::uint64_t began_ms = HandsetMilliseconds();
    server.stalled = true;
    EXPECT_TRUE(
        WaitFor([&] { return Heard().Frames() > before + 44100 && Heard().Tail(4410).Rms(0) == 0.0; }));
    server.stalled = false;
    EXPECT_TRUE(Hears(1000));
    const std::uint64_t took_ms = HandsetMilliseconds() - began_ms;
    // The log is written in tenths of a second, and read a little later than the clock.
    EXPECT_NEAR(static_cast<double>(Heard().Frames() - before) / 44.1, static_cast<double>(took_ms), 400.0);
}

TEST_F(OnTheAir, AStickWhoseCrystalIsAHundredPartsInAMillionOffPlays) {
    StickServer server(kOne, 0, 100.0);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    EXPECT_NEAR(Signal(), 47, 4);
    EXPECT_EQ(TextOfKind(4), L"KORA ONE");
    EXPECT_TRUE(WaitFor([] {
        const auto state = handset::ReadReception();
        // A carrier of 98.5 MHz is seen 9.85 kHz beside its place.
        return state && std::abs(std::abs(state->offset_Hz.value_or(0)) - 9850) < 1000;
    }));
}

TEST_F(OnTheAir, TheAntennaIsChangedWhileTheRadioPlays) {
    WriteBand("[9850]\nlevel=60\nps=BAND\n");
    Use(L"");
    ASSERT_EQ(device_->SetChannel(9850), S_OK);
    EXPECT_EQ(Signal(), 60);
    EXPECT_TRUE(WaitFor([&] {
        Condition();
        const auto state = handset::ReadReception();
        return state && state->source == L"band" && state->level == 60 && state->levels[110] == 60 &&
               state->levels[0] == 3;
    }));
    StickServer server(kOne);
    Use(server.Antenna());
    EXPECT_TRUE(WaitFor([&] { return std::abs(Signal() - 47) <= 4; }));
    EXPECT_EQ(Channel(), 9850u);
    EXPECT_EQ(TextOfKind(4), L"KORA ONE");
    Use(L"band");
    EXPECT_TRUE(WaitFor([&] { return Signal() == 60; }));
    EXPECT_EQ(TextOfKind(0), L"BAND");
}

TEST_F(OnTheAir, GainCorrectionAndFeedReachTheStick) {
    StickServer server(kOne);
    handset::SetStateDword(L"AntennaGain", 12);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    EXPECT_EQ(server.Argument(2), 1920000u);
    EXPECT_EQ(server.Argument(3), 1u);
    EXPECT_EQ(server.Argument(13), 12u);
    handset::SetStateDword(L"AntennaPpm", static_cast<std::uint32_t>(-20));
    handset::SetStateDword(L"AntennaBias", 1);
    handset::SetStateDword(L"AntennaGain", 99);
    EXPECT_TRUE(WaitFor([&] {
        Condition();
        return server.Argument(5) == static_cast<std::uint32_t>(-20) && server.Argument(14) == 1 &&
               server.Argument(13) == 28;
    }));
    EXPECT_EQ(server.clients, 1);
}

TEST_F(OnTheAir, AnAntennaThatIsNoneIsSaidAndTheSimulatedBandPlays) {
    WriteBand("[9850]\nlevel=60\n");
    Use(L"wire");
    ASSERT_EQ(device_->SetChannel(9850), S_OK);
    EXPECT_EQ(Signal(), 60);
    EXPECT_TRUE(
        Becomes(L"\"wire\" is no antenna: band, rtl_tcp:HOST:PORT or file:PATH: the simulated band plays"));
}

TEST_F(OnTheAir, ARecordingOfTheAirIsPlayedInALoop) {
    constexpr double kRate_Hz = 250000.0;
    transmitter::StationSettings station;
    station.multiplex.programme =
        std::make_shared<transmitter::CTones>(std::vector<transmitter::Tone>{{1000, 0.5, 0.5}}, 50e-6);
    transmitter::StreamSettings stream;
    stream.rate_Hz = kRate_Hz;
    stream.carrierToNoise_dBHz = 90;
    transmitter::CTransmitter air(stream, {station});
    std::vector<std::complex<float>> samples(static_cast<std::size_t>(kRate_Hz));
    air.Read(samples.data(), samples.size());
    std::vector<std::uint8_t> bytes;
    transmitter::Append(samples.data(), samples.size(), transmitter::StreamFormat::kCu8, &bytes);
    Use(L"file:\\air_98.5MHz.cu8;rate=250000");
    const auto gone = [&] { return Condition().find(L"cannot be read") != std::wstring::npos; };
    EXPECT_TRUE(WaitFor(gone));
    test::WriteBytes(handset::HostPath(L"\\air_98.5MHz.cu8"), {bytes.begin(), bytes.end()});
    EXPECT_TRUE(Becomes(L"plays"));
    ASSERT_EQ(device_->SetChannel(9850), S_OK);
    EXPECT_TRUE(WaitFor([&] { return std::abs(Signal() - 42) <= 4; }));
    ASSERT_EQ(device_->SetChannel(9900), S_OK);
    EXPECT_EQ(Signal(), 0);
    EXPECT_EQ(device_->SeekPrev(), S_OK);
    EXPECT_EQ(Channel(), 9850u);
    const std::uint64_t began_ms = GetTickCount64();
    // Beyond its end it goes on from its beginning.
    WaitFor([&] { return GetTickCount64() - began_ms > 1500; });
    EXPECT_NEAR(Signal(), 42, 4);
    EXPECT_EQ(Condition(), L"plays");
}

TEST_F(OnTheAir, ARadioThatIsSwitchedOffReceivesNothing) {
    StickServer server(kOne);
    Use(server.Antenna());
    ASSERT_TRUE(Plays());
    ASSERT_EQ(device_->Close(), S_OK);
    EXPECT_FALSE(handset::ReadReception());
    ASSERT_EQ(device_->Initialize(), S_OK);
    EXPECT_TRUE(Plays());
    EXPECT_EQ(server.clients, 2);
}

TEST(AntennaClock, AtAnotherClockThanLifesTheSimulatedBandPlaysAndSaysSo) {
    test::ExpectToPassAtSixtyTimesTheSpeed(L"FastAir.*");
}

class FastAir : public OnTheAir {};

TEST_F(FastAir, DISABLED_TheSimulatedBandPlaysAndSaysWhy) {
    WriteBand("[9850]\nlevel=60\n");
    Use(L"rtl_tcp:127.0.0.1:9");
    ASSERT_EQ(device_->SetChannel(9850), S_OK);
    EXPECT_EQ(Signal(), 60);
    EXPECT_TRUE(Becomes(L"the clock's rate is not 1: the simulated band plays"));
}

}  // namespace
