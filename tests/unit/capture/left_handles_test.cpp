// What a recording that is given back leaves in its process.
#include <algorithm>

#include "tests/support/process_counts.h"
#include "tests/support/wait.h"
#include "tests/unit/capture/recording_rig.h"

namespace {

using test::CRecordingRig;

constexpr int kTimes = 10;
// The first ones load what the process keeps.
constexpr int kWarm = 3;
// A lock that threads met at for the first time has an event from then on. That is once; what every recording
// leaves is left in each of these rounds.
constexpr int kRounds = 4;
// How long the threads of the last recording may take to end.
constexpr DWORD kEnd_ms = 3000;

class LeftHandles : public test::CaptureTest {
  protected:
    // Handles that are more after kTimes times; fewer than `wanted` are waited for, threads end in their
    // time.
    template <class Work>
    static long After(long wanted, Work work) {
        const auto held = [] { return static_cast<long>(test::HandlesOf(GetCurrentProcessId())); };
        const long before = held();
        for (int i = 0; i < kTimes; ++i) work();
        test::WaitFor([&] { return held() - before <= wanted; }, kEnd_ms);
        return held() - before;
    }
    // The least that a round left.
    template <class Work>
    static long Left(long wanted, Work work) {
        for (int i = 0; i < kWarm; ++i) work();
        long least = After(wanted, work);
        for (int round = 1; round < kRounds && least > wanted; ++round)
            least = std::min(least, After(wanted, work));
        return least;
    }
    static void Record(const wchar_t* path, HRESULT (CRecordingRig::*attach)(const std::wstring&)) {
        CRecordingRig rig;
        ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
        ASSERT_EQ((rig.*attach)(path), S_OK);
        ASSERT_EQ(rig.Start(), S_OK);
        test::LetPass(50);
        ASSERT_EQ(rig.Stop(), S_OK);
        EXPECT_TRUE(rig.Release());
    }
};

// Wine leaves an event behind for every graph that it makes.
TEST_F(LeftHandles, ARecordingLeavesNoneBesidesThoseOfTheHostsEmptyGraph) {
    PlayTone();
    const long host = Left(0, [] { test::CreateAs<IGraphBuilder>(CLSID_FilterGraph, IID_IGraphBuilder); });
    EXPECT_LE(Left(host, [] { Record(L"\\left.amr", &CRecordingRig::AttachAmr); }), host);
    EXPECT_LE(Left(host, [] { Record(L"\\left.wav", &CRecordingRig::AttachWav); }), host);
}

}  // namespace
