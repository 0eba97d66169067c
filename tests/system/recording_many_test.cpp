// What many recordings leave in the radio. KORA_RECORDINGS: how many.
#include <cstdlib>

#include "tests/bench/process_usage.h"
#include "tests/support/process_counts.h"
#include "tests/system/recording_test.h"

namespace {

using test::Lines;
using test::Radio;
using test::WaitFor;

constexpr std::size_t kEverydayRecordings = 12;
// The first ones load what the process keeps.
constexpr std::size_t kWarm = 3;
// All of it events: one of the graph that the seeking interface keeps, and under Wine one for each of the two
// graphs that are made.
constexpr std::size_t kHandlesKept = 3;
// One that the host's graphs have in common.
constexpr std::size_t kThreadsKept = 1;
// What the process loads later than with the first ones, among it an event for each of its locks at which two
// threads meet for the first time, as they do on a busy machine; fewer than the recordings that are counted,
// so that one more handle a recording shows.
constexpr std::size_t kLoadedLater = 5;
static_assert(kLoadedLater < kEverydayRecordings - 1 - kWarm);
// About 0.28 MB each; the heap grows in steps of up to a megabyte.
constexpr double kMemoryKept_MB = 0.35;
constexpr double kHeapSteps_MB = 2;

std::size_t Recordings() {
    const char* const recordings = std::getenv("KORA_RECORDINGS");
    return recordings != nullptr ? std::strtoul(recordings, nullptr, 10) : kEverydayRecordings;
}

struct Naming {
    const char* name;
    std::uint32_t setting;
    bool channels;  // the selected list has some
};

struct Held {
    std::ptrdiff_t handles;
    std::size_t threads;
    double memory_MB;
};

class ManyRecordings : public test::RecordingTest, public testing::WithParamInterface<Naming> {
  protected:
    void SetUp() override {
        PlayTone();
        DefineName(L"\\Often.");
        Set(L"SaveFileType", GetParam().setting);
        if (GetParam().channels) {
            EXPECT_EQ(test::RunProgram(L"handset.exe", L"favourites"), 0u);
        }
    }

    // One that begins and ends.
    void RecordOnce(Radio& radio) {
        DeleteFileW(handset.DevicePath(L"\\Often.amr").c_str());
        const int starts = Count(Lines(handset.Trace()), "Found required structure");
        TapRecord(radio);
        // The recorder builds its graph twice.
        ASSERT_TRUE(
            WaitFor([&] { return Count(Lines(handset.Trace()), "Found required structure") == starts + 2; }));
        ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
        ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(radio.ListView()); }));
    }

    // Without those of the databases that stay open, one for each look-up of a name in a list without
    // channels: the screen looks it up with every paint, and how often it paints is the host's business.
    std::ptrdiff_t HandlesNow(const Radio& radio) const {
        radio.Send(WM_NULL);
        const int lookUps = GetParam().channels ? 0 : Count(handset.TunerCalls(), "GetChannel");
        return static_cast<std::ptrdiff_t>(test::HandlesOf(radio.ProcessId())) - lookUps;
    }
    // The same twice, with an answer of the window between: not in the middle of a paint.
    std::ptrdiff_t HandlesAtRest(const Radio& radio) const {
        std::ptrdiff_t handles = 0;
        EXPECT_TRUE(WaitFor([&] {
            handles = HandlesNow(radio);
            return HandlesNow(radio) == handles;
        }));
        return handles;
    }
};

// The two interfaces that a recording leaves unreleased keep its graph; everything else is given back.
TEST_P(ManyRecordings, InARowLeaveNoThreadBehindAndTheSameFewHandlesEach) {
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    const bench::ProcessUsage usage(radio.Process(), handset.DevicePath(L"\\Windows\\UI.exe"));
    const std::size_t threads = test::ThreadsOf(radio.ProcessId());
    std::vector<Held> held;
    for (std::size_t recording = 0; recording < Recordings(); ++recording) {
        ASSERT_NO_FATAL_FAILURE(RecordOnce(radio)) << recording;
        // The thread of its time ends a moment later.
        EXPECT_TRUE(WaitFor([&] { return test::ThreadsOf(radio.ProcessId()) <= threads + kThreadsKept; }))
            << recording;
        held.push_back({HandlesAtRest(radio), test::ThreadsOf(radio.ProcessId()), usage.Private_MB()});
    }
    const std::size_t counted = held.size() - 1 - kWarm;
    const auto allowed = static_cast<std::ptrdiff_t>(counted * kHandlesKept + kLoadedLater);
    std::ptrdiff_t handles = 0;
    EXPECT_TRUE(WaitFor([&] {
        handles = HandlesAtRest(radio) - held[kWarm].handles;
        return handles <= allowed;
    })) << handles
        << " handles more, " << allowed << " are allowed";
    const double memory_MB = held.back().memory_MB - held[kWarm].memory_MB;
    EXPECT_LE(memory_MB, static_cast<double>(counted) * kMemoryKept_MB + kHeapSteps_MB);
    std::printf("%zu recordings: %.2f handles and %.0f kB each, %zu threads at the end, %zu at first\n",
                held.size(), static_cast<double>(handles) / static_cast<double>(counted),
                memory_MB * 1024 / static_cast<double>(counted), held.back().threads, threads);
}

INSTANTIATE_TEST_SUITE_P(Names, ManyRecordings,
                         testing::Values(Naming{"Automatic", 0, false}, Naming{"Defined", 1, false},
                                         Naming{"DefinedWithChannels", 1, true}),
                         [](const testing::TestParamInfo<Naming>& row) { return row.param.name; });

}  // namespace
