// Some handset hours of random events: the radio neither stops nor grows. `./kora bench --soak` goes on for
// 100.
#include "tests/bench/process_usage.h"
#include "tests/support/object_counts.h"
#include "tests/support/random_day.h"
#include "tests/system/radio_test.h"

namespace {

using test::CountObjects;
using test::ObjectCounts;
using test::Radio;
using test::WaitFor;

constexpr unsigned kSeed = 4711;
constexpr std::uint32_t kClockRate = 600;
// As in the long run of the measurements: a call in hand, and the heap's own steps.
constexpr DWORD kMoreObjects = 8;
constexpr double kMoreMemory_MB = 2;

class Soak : public test::RadioTest {
  protected:
    // Events until the monitor has made `rounds` more rounds.
    static void Live(test::RandomDay& day, long rounds) {
        const long end = day.Rounds() + rounds;
        const ULONGLONG begin = GetTickCount64();
        while (day.Rounds() < end) {
            ASSERT_LT(GetTickCount64() - begin, 120000u) << "the monitor stands still after " << day.Rounds();
            day.Step();
            WaitFor([] { return false; }, 20);
        }
    }
};

TEST_F(Soak, AfterManyRoundsOfRandomEventsTheRadioHoldsNoMoreThanBefore) {
    NEEDS_THE_SIMULATED_BAND(
        "a quarter of an hour of the monitor's rounds, which pass on a fast clock alone");
    test::StoreFavourites(handset);
    SetClockRate(kClockRate);
    Radio radio(handset);
    radio.WaitUntilShown();
    test::RandomDay day(handset, radio, kSeed);
    const bench::ProcessUsage usage(radio.Process(), handset.DevicePath(L"\\Windows\\UI.exe"));
    // What is made once and kept is made now.
    Live(day, 200);
    const ObjectCounts before = CountObjects(radio);
    const double memoryBefore = usage.Private_MB();
    Live(day, 1000);
    day.Calm();
    // The round in hand may still move to another frequency and say so.
    EXPECT_TRUE(WaitFor([&] {
        if (const HWND box = radio.Box(L"FM")) Radio::Answer(box, IDOK);
        return radio.Box(nullptr) == nullptr;
    }));
    ObjectCounts after = {};
    const auto asBefore = [&] {
        after = CountObjects(radio);
        return after.gdiObjects <= before.gdiObjects + kMoreObjects &&
               after.handles <= before.handles + kMoreObjects;
    };
    EXPECT_GT(before.gdiObjects, 0u);
    EXPECT_GT(before.handles, 0u);
    // Threads that are just ending have handles for a moment longer.
    EXPECT_TRUE(WaitFor(asBefore)) << after.gdiObjects << " drawing objects, " << before.gdiObjects
                                   << " before; " << after.handles << " handles, " << before.handles
                                   << " before";
    const double memory = usage.Private_MB();
    EXPECT_LE(memory, memoryBefore + kMoreMemory_MB) << "megabytes, " << memoryBefore << " before";
    std::printf("%lu handles, %lu before; %lu drawing objects, %lu before; %.2f MB, %.2f before\n",
                after.handles, before.handles, after.gdiObjects, before.gdiObjects, memory, memoryBefore);

    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
}

}  // namespace
