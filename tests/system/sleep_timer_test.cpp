// The sleep timer, waited for on a fast clock.
#include <cstdio>

#include "resources/resource_ids.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::HasSubstr;
using testing::Not;

class SleepTime : public test::RadioTest {
  protected:
    void SetUp() override {
        NEEDS_THE_SIMULATED_BAND("quarters of an hour, which pass on a fast clock alone");
        SetClockRate(300);
    }
    struct Tick {
        int elapsed_s, length_s;
    };
    std::vector<Tick> Ticks() const {
        std::vector<Tick> ticks;
        for (const std::string& line : test::Lines(handset.Trace())) {
            Tick tick = {};
            if (std::sscanf(line.c_str(), "FM: SleepTimer: %d / %d s", &tick.elapsed_s, &tick.length_s) ==
                2) {
                ticks.push_back(tick);
            }
        }
        return ticks;
    }
    bool WaitForTicks(std::size_t count) const {
        return WaitFor([&] { return Ticks().size() >= count; });
    }
};

TEST_F(SleepTime, After15MinutesTheRadioSaysSoAndCloses) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_SLEEP_15);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
    const auto ticks = Ticks();
    ASSERT_FALSE(ticks.empty());
    EXPECT_EQ(ticks.back().length_s, 900);
    EXPECT_GE(ticks.back().elapsed_s, 900);
    for (std::size_t i = 0; i + 1 < ticks.size(); ++i) EXPECT_LT(ticks[i].elapsed_s, 900);
    EXPECT_THAT(
        handset.Trace(),
        HasSubstr("\nClose FM -- SleepTimer Time out:" + std::to_string(ticks.back().elapsed_s) + " s\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: Program Terminated.\n"));
}

TEST_F(SleepTime, Choosing30MinutesWhileTheTimerFor15RunsCountsFromNow) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_SLEEP_15);
    ASSERT_TRUE(WaitFor([&] {
        const auto ticks = Ticks();
        return !ticks.empty() && ticks.back().elapsed_s > 100;
    }));
    radio.Command(IDC_SLEEP_30);
    ASSERT_TRUE(WaitFor([&] {
        const auto ticks = Ticks();
        return !ticks.empty() && ticks.back().length_s == 1800;
    }));
    const auto ticks = Ticks();
    const auto first =
        std::find_if(ticks.begin(), ticks.end(), [](const Tick& tick) { return tick.length_s == 1800; });
    EXPECT_LT(first->elapsed_s, 100);
    radio.Command(IDC_SLEEP_OFF);
}

TEST_F(SleepTime, ChoosingOffStopsTheTimerAndTheRadioPlaysOn) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_SLEEP_15);
    ASSERT_TRUE(WaitForTicks(3));
    radio.Command(IDC_SLEEP_OFF);
    radio.Send(WM_NULL);
    const std::size_t after = Ticks().size();
    ASSERT_TRUE(WaitForRounds(40));
    EXPECT_EQ(Ticks().size(), after);
    EXPECT_TRUE(radio.Runs());
    EXPECT_THAT(handset.Trace(), Not(HasSubstr("Time out")));
}

}  // namespace
