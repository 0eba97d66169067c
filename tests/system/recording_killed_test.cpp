// What a killed radio leaves behind. KORA_KILLS: how often it is killed.
#include <algorithm>
#include <cstdlib>
#include <random>

#include "tests/system/recording_test.h"

namespace {

using test::DecodeSound;
using test::Radio;
using test::WaitFor;

constexpr int kEverydayKills = 8;
constexpr unsigned kSeed = 4711;

int Kills() {
    const char* const kills = std::getenv("KORA_KILLS");
    return kills != nullptr ? std::atoi(kills) : kEverydayKills;
}

struct Format {
    std::uint32_t setting;
    const wchar_t* file;
    int rate_Hz;
};
constexpr Format kFormats[] = {{0, L"\\Killed.amr", 8000}, {2, L"\\Killed.wav", 22050}};

class KilledRecording : public test::RecordingTest {
  protected:
    void SetUp() override { PlayTone(); }

    // For how long it had recorded when it was killed.
    double KillAfter(int moment_ms, const Format& format) {
        SetFormat(format.setting);
        DefineName(L"\\Killed.");
        DeleteFileW(handset.DevicePath(format.file).c_str());
        Radio radio(handset, L"-Rec -Channel 9850");
        radio.WaitUntilShown();
        TapRecord(radio);
        EXPECT_TRUE(WaitFor([&] { return Exists(format.file); }));
        const ULONGLONG start = GetTickCount64();
        WaitFor([&] { return GetTickCount64() - start >= static_cast<ULONGLONG>(moment_ms); });
        TerminateProcess(radio.Process(), 1);
        const double played_s = static_cast<double>(GetTickCount64() - start) / 1000;
        EXPECT_TRUE(radio.WaitUntilGone());
        return played_s;
    }
};

TEST_F(KilledRecording, PlaysUpToTheLastSecondBeforeTheKill) {
    std::mt19937 random(kSeed);
    double mostLost_s = 0;
    for (int kill = 0; kill < Kills(); ++kill) {
        const int moment_ms = std::uniform_int_distribution<int>(200, 2600)(random);
        const Format& format = kFormats[kill % 2];
        SCOPED_TRACE(testing::Message() << "kill " << kill << " at " << moment_ms << " ms");
        const double played_s = KillAfter(moment_ms, format);
        const auto samples = DecodeSound(handset.DevicePath(format.file), test::Channels::kMean);
        const double kept_s = static_cast<double>(samples.size()) / format.rate_Hz;
        EXPECT_GE(kept_s, played_s - 1);
        mostLost_s = std::max(mostLost_s, played_s - kept_s);
    }
    std::printf("%d kills: at most %.3f s were lost\n", Kills(), mostLost_s);
}

}  // namespace
