// A pilot that is heard for a moment and goes: what comes after it is received as if it had never been.
#include <gtest/gtest.h>

#include <string>

#include "tests/native/antenna/ether_radio.h"

namespace {

constexpr std::size_t kBusBuffer_bytes = 262144;

constexpr char kStereo[] =
    "[8760]\nlevel=45\nstereo=1\nps=LOW END\n[9850]\nlevel=45\nstereo=1\nps=KORA ONE\n";
constexpr char kMono[] = "[9850]\nlevel=45\nps=KORA TWO\n";

// The station at first; that at 87.5 MHz is the neighbour's pilot.
class StereoGone : public testing::TestWithParam<std::uint32_t> {};

INSTANTIATE_TEST_SUITE_P(From, StereoGone, testing::Values(9850u, 8750u),
                         [](const auto& row) { return std::to_string(row.param); });

// A station's name is on the air four times a second.
testing::AssertionResult NameComes(test::EtherRadio& radio) {
    const double latest_s = radio.Now_s() + 3.0;
    while (radio.Receiver().Station().serviceName.whole != "KORA TWO") {
        if (radio.Now_s() > latest_s) return testing::AssertionFailure() << "none in 3 s";
        radio.Run(0.1);
    }
    return testing::AssertionSuccess();
}

// The loop may have locked at any moment of these.
TEST_P(StereoGone, AMonoStationIsReadWheneverThePilotWent) {
    for (int heard_ms = 110; heard_ms <= 170; heard_ms += 5) {
        test::EtherRadio radio(kStereo, kBusBuffer_bytes);
        radio.Tune(GetParam());
        radio.Run(heard_ms / 1000.0);
        radio.SetBand(kMono);
        radio.Run(0.5);
        if (GetParam() != 9850) radio.Tune(9850);
        EXPECT_TRUE(NameComes(radio)) << heard_ms;
    }
}

}  // namespace
