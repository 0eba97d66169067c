#include "tests/bench/faults.h"

#include <cstdio>

#include "tests/support/fault_day.h"
#include "tests/support/handset_damage.h"
#include "tests/support/random_day.h"

namespace bench {
namespace {

// Faster, the sound of a recording falls behind on a busy machine, and a stop waits for it.
constexpr std::uint32_t kClockRate = 120;
constexpr int kReports = 8;

void Print(double hours, const test::FaultFigures& f) {
    std::printf(
        "%6.1f h  events %d: faults %d, calls %d, sleeps %d, scans %d, taps on record %d; bookings %d, of "
        "these %d pairs of one minute, starts by them %d; radios %d: killed %d, ended by a fault %d, stayed "
        "without a window %d; services killed "
        "%d\n",
        hours, f.events, f.faults, f.calls, f.sleeps, f.scans, f.recordings, f.bookings, f.pairs,
        f.bookedStarts, f.radios, f.kills, f.crashes, f.leftBehind, f.services);
    for (const auto& [cause, count] : f.causes)
        std::printf("          ended by %s: %d\n", cause.c_str(), count);
    std::fflush(stdout);
}

}  // namespace

int RunFaults(double hours, unsigned seed) {
    std::printf("seed %u\n", seed);
    test::HandsetUnderTest handset;
    test::StoreFavourites(handset);
    handset.SetState(L"ClockRate", kClockRate);
    test::FaultDay day(handset, seed);
    day.BookPair(3);
    for (int part = 1; part <= kReports; ++part) {
        day.LiveFor(hours / kReports, kClockRate);
        Print(hours * part / kReports, day.Figures());
        for (const std::string& line : day.Complaints()) std::printf("RADIO, so far: %s\n", line.c_str());
    }
    day.End();
    const test::Kept kept = test::LookAtWhatIsKept(handset);
    std::printf("kept: %d channels in %d lists, %d bookings, %d recordings of %.0f s together\n",
                kept.channels, kept.groups, kept.bookings, kept.recordings, kept.recorded_s);
    for (const std::string& line : day.Complaints()) std::printf("RADIO: %s\n", line.c_str());
    for (const std::string& line : kept.damage) std::printf("DAMAGE: %s\n", line.c_str());
    const int least = day.Figures().bookings, most = least + day.Figures().unseenBookings;
    const bool booked = kept.bookings >= least && kept.bookings <= most;
    if (!booked) std::printf("DAMAGE: %d to %d were booked\n", least, most);
    const bool intact = kept.damage.empty() && day.Complaints().empty() && booked;
    std::printf("%s\n", intact ? "all is intact" : "NOT ALL IS INTACT");
    return intact ? 0 : 1;
}

}  // namespace bench
