// The pilot's loop: sense of the phase, speed, bandwidth, and what it takes for a pilot.
#include "handset/fmdevice/sdr/pilot_loop.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using sdr::CPilotLoop;
using sdr::kBlockSamples;
using sdr::MpxBlock;

constexpr double kTwoPi = 6.283185307179586;

// A multiplex made block by block: pilot, a tone, white noise.
class Multiplex {
  public:
    double pilot = 0.1;
    double pilot_Hz = 19000.0;
    double phase_turns = 0.37;
    double tone = 0.0;
    double tone_Hz = 12500.0;
    double noise = 0.0;  // standard deviation

    const float* Next() {
        std::normal_distribution<double> normal;
        for (std::size_t i = 0; i < kBlockSamples; ++i, ++at_) {
            const double t = static_cast<double>(at_) / sdr::kMpxRate_Hz;
            block_[i] = static_cast<float>(pilot * std::sin(kTwoPi * (pilot_Hz * t + phase_turns)) +
                                           tone * std::sin(kTwoPi * tone_Hz * t) + noise * normal(random_));
        }
        return block_;
    }
    // Of the block that was given last, at its first sample.
    double Phase_turns() const {
        const double t = static_cast<double>(at_ - kBlockSamples) / sdr::kMpxRate_Hz;
        return pilot_Hz * t + phase_turns;
    }

  private:
    std::size_t at_ = 0;
    std::mt19937 random_{7};
    float block_[kBlockSamples] = {};
};

class PilotLoopTest : public testing::Test {
  protected:
    MpxBlock Run(std::size_t blocks) {
        MpxBlock block;
        for (std::size_t i = 0; i < blocks; ++i) loop_.Process(multiplex_.Next(), &block, pairs_);
        return block;
    }
    // How far the loop is ahead, -0.5 to 0.5 turns.
    double Error_turns(const MpxBlock& block) const {
        const double error = block.pilotPhase_turns - multiplex_.Phase_turns();
        return error - std::round(error);
    }

    Multiplex multiplex_;
    CPilotLoop loop_;
    float pairs_[2 * kBlockSamples] = {};
};

TEST_F(PilotLoopTest, ThePhaseIsThatOfASine) {
    multiplex_.tone = 0.8;
    const MpxBlock block = Run(500);
    EXPECT_TRUE(block.pilotLocked);
    EXPECT_NEAR(Error_turns(block), 0.0, 1e-4);
    EXPECT_NEAR(loop_.Deviation_Hz(), 7500.0, 10.0);
}

TEST_F(PilotLoopTest, LocksWithinTwentyMillisecondsCloseToTheRightPhase) {
    multiplex_.pilot_Hz = 19002.0;
    const MpxBlock block = Run(20);
    EXPECT_TRUE(block.pilotLocked);
    EXPECT_NEAR(Error_turns(block), 0.0, 2e-3);
}

TEST_F(PilotLoopTest, FollowsAPilotAsFarOffAsClocksAre) {
    for (const double off_Hz : {-6.0, -2.0, 4.0, 10.0}) {
        multiplex_.pilot_Hz = 19000.0 + off_Hz;
        loop_.Reset();
        const MpxBlock block = Run(1000);
        EXPECT_TRUE(block.pilotLocked);
        EXPECT_NEAR(loop_.RateOffset_Hz(), off_Hz, 1e-3);
        EXPECT_NEAR(block.pilotStep_turns * sdr::kMpxRate_Hz, 19000.0 + off_Hz, 1e-2);
        EXPECT_NEAR(Error_turns(block), 0.0, 1e-4);
    }
}

TEST_F(PilotLoopTest, ItsPhaseNoiseIsThatOfItsBandwidth) {
    multiplex_.noise = 0.3;
    Run(2000);
    double power = 0.0;
    constexpr std::size_t kBlocks = 20000;
    for (std::size_t i = 0; i < kBlocks; ++i) {
        const double error_rad = kTwoPi * Error_turns(Run(1));
        power += error_rad * error_rad;
    }
    power /= kBlocks;
    // White noise of one-sided density N beside a sine of power P turns its phase by N B / P.
    const double density = 2.0 * 0.3 * 0.3 / sdr::kMpxRate_Hz;
    const double bandwidth_Hz = power * 0.1 * 0.1 / 2.0 / density;
    EXPECT_NEAR(bandwidth_Hz / CPilotLoop::NoiseBandwidth_Hz(), 1.0, 0.2);
    EXPECT_LT(CPilotLoop::NoiseBandwidth_Hz(), 10.0);
}

TEST_F(PilotLoopTest, TheDifferenceIsMixedWithTheSecondHarmonic) {
    Run(300);
    MpxBlock block;
    const float* multiplex = multiplex_.Next();
    loop_.Process(multiplex, &block, pairs_);
    EXPECT_EQ(block.samples, multiplex);
    EXPECT_EQ(block.count, kBlockSamples);
    for (std::size_t i = 0; i < kBlockSamples; i += 7) {
        const double angle =
            kTwoPi * (block.pilotPhase_turns + block.pilotStep_turns * static_cast<double>(i));
        EXPECT_NEAR(pairs_[2 * i + 1], 2.0 * multiplex[i] * std::sin(2.0 * angle), 1e-4);
    }
}

TEST_F(PilotLoopTest, NoiseAndSoundAreNoPilot) {
    multiplex_.pilot = 0.0;
    multiplex_.tone = 0.9;
    multiplex_.noise = 0.5;
    for (const double tone_Hz : {1000.0, 12500.0, 14990.0, 23010.0}) {
        multiplex_.tone_Hz = tone_Hz;
        for (int i = 0; i < 3000; ++i) ASSERT_FALSE(Run(1).pilotLocked) << tone_Hz;
    }
}

TEST_F(PilotLoopTest, ALostPilotIsNoticedAndItsRateIsKept) {
    multiplex_.pilot_Hz = 19001.5;
    ASSERT_TRUE(Run(1000).pilotLocked);
    multiplex_.pilot = 0.0;
    multiplex_.noise = 0.3;
    EXPECT_FALSE(Run(400).pilotLocked);
    EXPECT_NEAR(loop_.RateOffset_Hz(), 1.5, 1.0);
}

// Noise throws a loop that has just locked by hertz before the loss is noticed.
TEST_F(PilotLoopTest, APilotThatGoesRightAfterItWasFoundLeavesTheNominalRate) {
    for (std::size_t heard = 16; heard < 76; ++heard) {
        loop_.Reset();
        multiplex_.pilot = 0.1;
        multiplex_.noise = 0.03;
        ASSERT_TRUE(Run(heard + 2).pilotLocked) << heard;
        multiplex_.pilot = 0.0;
        multiplex_.noise = 0.3;
        ASSERT_FALSE(Run(400).pilotLocked) << heard;
        EXPECT_NEAR(loop_.RateOffset_Hz(), 0.0, 0.1) << heard;
    }
}

TEST_F(PilotLoopTest, TheRateOfOneStationIsNotKeptForAnother) {
    multiplex_.pilot_Hz = 19006.0;
    ASSERT_TRUE(Run(1000).pilotLocked);
    loop_.Reset();
    EXPECT_NEAR(loop_.RateOffset_Hz(), 0.0, 1e-9);
    multiplex_.pilot = 0.0;
    multiplex_.noise = 0.3;
    EXPECT_FALSE(Run(400).pilotLocked);
    EXPECT_NEAR(loop_.RateOffset_Hz(), 0.0, 1e-9);
}

TEST_F(PilotLoopTest, NoiseFarLouderThanThePilotDoesNotHoldTheLock) {
    ASSERT_TRUE(Run(100).pilotLocked);
    multiplex_.pilot = 0.0;
    multiplex_.noise = 50.0;
    EXPECT_FALSE(Run(300).pilotLocked);
}

}  // namespace
