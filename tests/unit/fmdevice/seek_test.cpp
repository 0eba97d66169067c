// Seeks of the device.
#include <atomic>
#include <thread>

#include "handset/coredll/kernel/platform_call.h"
#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

class TunerSeek : public test::TunerTest {};

constexpr char kStations[] = "[8760]\nlevel=30\n[9850]\nlevel=45\n[10790]\nlevel=40\n";

TEST_F(TunerSeek, GoesFromStationToStationAndRoundTheEnds) {
    WriteBand(kStations);
    PowerUp();
    for (const std::uint32_t station : {8760u, 9850u, 10790u, 8760u}) {
        ASSERT_EQ(device_->SeekNext(), S_OK);
        EXPECT_EQ(Channel(), station);
    }
    ASSERT_EQ(device_->SeekPrev(), S_OK);
    EXPECT_EQ(Channel(), 10790u);
}

TEST_F(TunerSeek, WithoutWrapItFailsAtTheEndAndStays) {
    WriteBand(std::string("[band]\nwrap=0\n") + kStations);
    PowerUp();
    ASSERT_EQ(device_->SetChannel(10790), S_OK);
    EXPECT_EQ(device_->SeekNext(), test::kNoStation);
    EXPECT_EQ(Channel(), 10790u);
    ASSERT_EQ(device_->SetChannel(8760), S_OK);
    EXPECT_EQ(device_->SeekPrev(), test::kNoStation);
    EXPECT_EQ(Channel(), 8760u);
}

TEST_F(TunerSeek, ABandWithoutAStationHasNothingToFind) {
    WriteBand("");
    PowerUp();
    EXPECT_EQ(device_->SeekNext(), test::kNoStation);
    EXPECT_EQ(Channel(), 8750u);
}

TEST_F(TunerSeek, TakesHandsetTime) {
    WriteBand(kStations);
    PowerUp();
    const std::uint64_t begin = HandsetMilliseconds();
    ASSERT_EQ(device_->SeekNext(), S_OK);
    EXPECT_GE(HandsetMilliseconds() - begin, 90u);
}

TEST_F(TunerSeek, AnotherTuningOvertakesIt) {
    WriteBand("[10790]\nlevel=40\n");
    PowerUp();
    std::atomic<bool> over{false};
    HRESULT sought = S_OK;
    std::thread seeker([&] {
        sought = device_->SeekNext();
        over = true;
    });
    // Whatever moment the seek begins at, a tuning falls into its tenths of a second.
    test::WaitFor([&] { return device_->SetChannel(9010) == S_OK && over; });
    seeker.join();
    EXPECT_EQ(sought, E_ABORT);
    EXPECT_EQ(Channel(), 9010u);
}

}  // namespace
