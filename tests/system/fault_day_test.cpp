// Everything that may go wrong, at random, for a while: what the user has stored is intact afterwards.
// KORA_FAULT_HOURS makes it longer; `./kora bench --faults` is the long form.
#include "tests/support/fault_day.h"

#include <cstdlib>

#include "tests/support/handset_damage.h"
#include "tests/support/random_day.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;

constexpr std::uint32_t kClockRate = 120;
constexpr double kHours = 0.5;
constexpr int kMore = 10, kEvents = 21;

class Faults : public test::RadioTest {};

TEST_F(Faults, LeaveTheChannelsTheBookingsAndEveryRecordingIntact) {
    NEEDS_THE_SIMULATED_BAND("half an hour, which passes on a fast clock alone");
    const char* const hours = std::getenv("KORA_FAULT_HOURS");
    const char* const given = std::getenv("KORA_FAULT_SEED");
    const unsigned seed = given != nullptr ? static_cast<unsigned>(std::atol(given)) : std::random_device()();
    SCOPED_TRACE("KORA_FAULT_SEED=" + std::to_string(seed));
    RecordProperty("seed", std::to_string(seed));
    test::StoreFavourites(handset);
    const int channels = test::LookAtWhatIsKept(handset).channels;
    EXPECT_GT(channels, 0);
    SetClockRate(kClockRate);
    test::FaultDay day(handset, seed);
    day.BookPair(3);
    day.LiveFor(hours != nullptr ? std::atof(hours) : kHours, kClockRate);
    // A busy machine gets through less in the same time.
    for (int more = 0; more < kMore && day.Figures().events < kEvents; ++more)
        day.LiveFor(kHours / kMore, kClockRate);
    day.End();
    EXPECT_THAT(day.Complaints(), testing::IsEmpty());
    EXPECT_GE(day.Figures().events, kEvents);
    EXPECT_GT(day.Figures().pairs, 0);

    const test::Kept kept = test::LookAtWhatIsKept(handset);
    EXPECT_THAT(kept.damage, testing::IsEmpty());
    EXPECT_GE(kept.bookings, day.Figures().bookings);
    EXPECT_LE(kept.bookings, day.Figures().bookings + day.Figures().unseenBookings);

    // And the radio starts as ever.
    Radio radio(handset);
    radio.WaitUntilShown();
    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
}

TEST(FaultDay, ComplainsOfEveryEndThatNoFaultExplains) {
    for (const char* cause : {"", "crash:SetVolume"}) {
        EXPECT_EQ(test::FaultDay::ComplaintOfEnd(0, cause), "");
        for (const DWORD code : {DWORD{1}, DWORD{99}, DWORD{STATUS_STACK_OVERFLOW}, ~DWORD{0}})
            EXPECT_NE(test::FaultDay::ComplaintOfEnd(code, cause), "") << code;
    }
    EXPECT_EQ(test::FaultDay::ComplaintOfEnd(STATUS_ACCESS_VIOLATION, "crash:SetVolume"), "");
    EXPECT_EQ(test::FaultDay::ComplaintOfEnd(STATUS_ACCESS_VIOLATION, ""), "a radio ended with 0xc0000005");
}

TEST(FaultDay, ACrashIsExplainedByAFaultThatWasRaisedAndThatNoGuardHasTaken) {
    const std::vector<std::string> quiet = {"GetSignal -> 0: 45"};
    const std::vector<std::string> one = {"GetSignal -> 0xC0000005", "SetVolume -> 0: 40"};
    const std::vector<std::string> two = {"GetSignal -> 0xC0000005", "SetVolume -> 0xC0000005"};
    const std::string taken = "a line\nFM: *** Exception at Main_threadProc\n";
    EXPECT_EQ(test::FaultDay::CauseOfCrash(quiet, ""), "");
    EXPECT_EQ(test::FaultDay::CauseOfCrash(one, ""), "crash:GetSignal");
    EXPECT_EQ(test::FaultDay::CauseOfCrash(one, taken), "");
    EXPECT_EQ(test::FaultDay::CauseOfCrash(two, taken), "crash:SetVolume");
    EXPECT_EQ(test::FaultDay::CauseOfCrash(two, taken + "FM: *** SleepTimerProc Crash"), "");
}

}  // namespace
