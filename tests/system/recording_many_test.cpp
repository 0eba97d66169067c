// What many recordings leave in the radio. KORA_RECORDINGS: how many.
#include <cstdlib>

#include "tests/bench/process_usage.h"
#include "tests/support/process_counts.h"
#include "tests/system/recording_test.h"

namespace {

using test::Lines;
using test::Radio;
using test::WaitFor;

constexpr std::size_t kEverydayRecordings = 8;
// The first ones load what the process keeps.
constexpr std::size_t kWarm = 3;
// Threads and files that end a moment after the last recording.
constexpr std::size_t kHandlesEnding = 6;
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
    // What stays with each recording, all of it events: one of the graph that the seeking interface keeps;
    // under Wine one for each of the two graphs that are made; and a database's for each look-up of a name in
    // a list without channels.
    std::size_t handlesKept;
};

struct Held {
    std::size_t handles, threads;
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
};

// The two interfaces that a recording leaves unreleased keep its graph; everything else is given back.
TEST_P(ManyRecordings, InARowLeaveNoThreadBehindAndTheSameFewHandlesEach) {
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    const bench::ProcessUsage usage(radio.Process(), handset.DevicePath(L"\\Windows\\UI.exe"));
    std::vector<Held> held;
    for (std::size_t recording = 0; recording < Recordings(); ++recording) {
        ASSERT_NO_FATAL_FAILURE(RecordOnce(radio)) << recording;
        held.push_back(
            {test::HandlesOf(radio.ProcessId()), test::ThreadsOf(radio.ProcessId()), usage.Private_MB()});
    }
    EXPECT_TRUE(WaitFor([&] { return test::ThreadsOf(radio.ProcessId()) <= held[kWarm].threads; }));
    const std::size_t counted = held.size() - 1 - kWarm;
    const std::size_t handles = held.back().handles - held[kWarm].handles;
    const double memory_MB = held.back().memory_MB - held[kWarm].memory_MB;
    EXPECT_LE(handles, counted * GetParam().handlesKept + kHandlesEnding);
    EXPECT_LE(memory_MB, static_cast<double>(counted) * kMemoryKept_MB + kHeapSteps_MB);
    std::printf("%zu recordings: %.2f handles and %.0f kB each, %zu threads at the end, %zu at first\n",
                held.size(), static_cast<double>(handles) / static_cast<double>(counted),
                memory_MB * 1024 / static_cast<double>(counted), held.back().threads, held[kWarm].threads);
}

INSTANTIATE_TEST_SUITE_P(Names, ManyRecordings,
                         testing::Values(Naming{"Automatic", 0, false, 6}, Naming{"Defined", 1, false, 5},
                                         Naming{"DefinedWithChannels", 1, true, 3}),
                         [](const testing::TestParamInfo<Naming>& row) { return row.param.name; });

}  // namespace
