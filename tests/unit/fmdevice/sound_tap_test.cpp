// The tap that the capture filter reads.
#include <thread>
#include <vector>

#include "handset/coredll/kernel/platform_call.h"
#include "handset/sound/tap.h"
#include "tests/unit/fmdevice/tuner_under_test.h"
#include "tests/unit/fmdevice/wav_measure.h"

namespace {

class SoundTap : public test::TunerTest {
  protected:
    void SetUp() override {
        WriteBand("[9000]\nlevel=100\nprogramme=tone:440\n");
        PowerUp();
        device_->SetChannel(9000);
        device_->SetVolume(100);
    }
};

TEST_F(SoundTap, GivesTheSoundWithoutAGapAsTheClockGoes) {
    std::uint64_t position = 0;
    const std::uint64_t clock = HandsetMilliseconds();
    const std::uint32_t tap = HandsetSoundOpen(&position);
    ASSERT_NE(tap, 0u);
    EXPECT_NEAR(static_cast<double>(position), static_cast<double>(clock) * 44.1, 44100.0);
    test::Sound sound;
    const std::uint64_t first = position;
    while (sound.Frames() < 44100) {
        std::int16_t block[2 * 1000];
        const std::uint64_t wanted = position;
        const std::uint32_t count = HandsetSoundRead(tap, &position, block, 1000, test::kDeadline_ms);
        ASSERT_EQ(count, 1000u);
        ASSERT_EQ(position, wanted);
        sound.samples.insert(sound.samples.end(), block, block + 2 * count);
        position += count;
    }
    EXPECT_LE(position, HandsetMilliseconds() * 441 / 10);
    EXPECT_GE(position - first, 44100u);
    EXPECT_NEAR(sound.Tail(22050).Tone(0, 440), 0.4, 0.01);
    HandsetSoundClose(tap);
}

TEST_F(SoundTap, GivesSilenceWhileTheRadioIsOff) {
    ASSERT_EQ(device_->Close(), S_OK);
    std::uint64_t position = 0;
    const std::uint32_t tap = HandsetSoundOpen(&position);
    std::vector<std::int16_t> block(2 * 4410, 7);
    ASSERT_EQ(HandsetSoundRead(tap, &position, block.data(), 4410, test::kDeadline_ms), 4410u);
    EXPECT_EQ(block, std::vector<std::int16_t>(2 * 4410, 0));
    HandsetSoundClose(tap);
}

TEST_F(SoundTap, AReadEndsAtItsTimeOutWithWhatIsThere) {
    std::uint64_t position = 0;
    const std::uint32_t tap = HandsetSoundOpen(&position);
    std::vector<std::int16_t> block(2 * 44100);
    EXPECT_LT(HandsetSoundRead(tap, &position, block.data(), 44100, 50), 44100u);
    HandsetSoundClose(tap);
}

TEST_F(SoundTap, AReaderThatNoLongerWaitsForAllOfItStillGetsWhatIsThere) {
    constexpr std::uint32_t kUsual = 2646;
    std::uint64_t position = 0;
    const std::uint32_t tap = HandsetSoundOpen(&position);
    std::vector<std::int16_t> block(2 * 44100);
    for (int read = 0; read < 5; ++read) {
        ASSERT_EQ(HandsetSoundRead(tap, &position, block.data(), kUsual, test::kDeadline_ms), kUsual);
        position += kUsual;
    }
    EXPECT_GT(HandsetSoundRead(tap, &position, block.data(), 44100, 50), 0u);
    HandsetSoundClose(tap);
}

TEST_F(SoundTap, AReaderThatSleepsTooLongIsMovedOn) {
    std::uint64_t position = 0;
    const std::uint32_t tap = HandsetSoundOpen(&position);
    const std::uint64_t opened = position;
    test::WaitFor(
        [&] { return HandsetMilliseconds() * 441 / 10 > opened + kSoundTapCapacity_frames + 44100; });
    std::int16_t block[2];
    ASSERT_EQ(HandsetSoundRead(tap, &position, block, 1, test::kDeadline_ms), 1u);
    EXPECT_GT(position, opened);
    HandsetSoundClose(tap);
}

TEST_F(SoundTap, ClosingEndsAReadThatIsUnderWay) {
    std::uint64_t position = 0;
    const std::uint32_t tap = HandsetSoundOpen(&position);
    std::uint64_t later = position + 3600ull * 44100;
    std::int16_t block[2];
    std::uint32_t count = 7;
    std::thread reader([&] { count = HandsetSoundRead(tap, &later, block, 1, INFINITE); });
    HandsetSoundClose(tap);
    reader.join();
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(HandsetSoundRead(tap, &position, block, 1, 0), 0u);
}

TEST_F(SoundTap, ATapNeedsNoDevice) {
    device_->Release();
    device_ = nullptr;
    std::uint64_t position = 0;
    const std::uint32_t tap = HandsetSoundOpen(&position);
    std::int16_t block[2 * 100];
    EXPECT_EQ(HandsetSoundRead(tap, &position, block, 100, test::kDeadline_ms), 100u);
    HandsetSoundClose(tap);
}

TEST_F(SoundTap, ANullPointerIsRefused) {
    EXPECT_EQ(HandsetSoundOpen(nullptr), 0u);
    std::uint64_t position = 0;
    EXPECT_EQ(HandsetSoundRead(1, &position, nullptr, 1, 0), 0u);
}

}  // namespace
