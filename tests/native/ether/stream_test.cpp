// The pace of the ether's samples, and what is lost when somebody is too slow.
#include "handset/ether/stream.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using ether::CAir;
using ether::CStream;

constexpr std::size_t kBusBuffer_bytes = 262144;
constexpr std::size_t kMostBuffers = 8;

class EtherStream : public testing::Test {
  protected:
    EtherStream() {
        TakeAll();
        // 1.024 MHz: a buffer takes 0.128 s.
        const std::uint8_t rate[] = {0x02, 0x00, 0x0F, 0xA0, 0x00};
        stream.Take(rate, sizeof rate, 100);
    }
    // A client that takes all there is. Result: how much that was.
    std::size_t TakeAll() {
        std::size_t bytes = 0;
        while (stream.FrontSize() > 0) {
            bytes += stream.FrontSize();
            stream.Sent(stream.FrontSize());
        }
        return bytes;
    }

    CAir air{[](const std::string&) { return fm::MakeGenerator({}); }, 1795435200, 2};
    CStream stream{&air, {}, {}, 100};
};

TEST_F(EtherStream, SamplesComeAtThePaceOfTheClock) {
    EXPECT_EQ(TakeAll(), 0u);
    std::size_t bytes = 0;
    double now_s = 100;
    for (int step = 0; step < 1000; ++step) {
        now_s += 0.01;
        stream.Advance(now_s);
        bytes += TakeAll();
        // Whole buffers, and never more than the time allows but for the block in hand.
        EXPECT_EQ(bytes % kBusBuffer_bytes, 0u);
        EXPECT_LE(static_cast<double>(bytes), (now_s - 100 + 0.004) * 2048000);
        EXPECT_GT(static_cast<double>(bytes + kBusBuffer_bytes), (now_s - 100) * 2048000 - 1);
    }
    EXPECT_EQ(stream.Late_s(), 0);
}

TEST_F(EtherStream, ASlowClientLosesTheOldestBuffersWhole) {
    stream.Advance(100.15);
    ASSERT_EQ(stream.FrontSize(), kBusBuffer_bytes);
    stream.Sent(1001);
    const std::vector<std::uint8_t> begun(stream.Front(), stream.Front() + stream.FrontSize());
    for (double now_s = 100.15; now_s < 103; now_s += 0.1) stream.Advance(now_s);
    EXPECT_GT(stream.LostBuffers(), 5u);
    // What was begun is ended, so that no sample is cut.
    EXPECT_EQ(std::vector<std::uint8_t>(stream.Front(), stream.Front() + stream.FrontSize()), begun);
    EXPECT_EQ(TakeAll(), kMostBuffers * kBusBuffer_bytes - 1001);
}

TEST_F(EtherStream, SmallerBuffersComeSoonerAndAsManyMoreOfThemWait) {
    CStream quick(&air, {0, 32768}, {}, 200);
    quick.Sent(quick.FrontSize());
    const std::uint8_t rate[] = {0x02, 0x00, 0x0F, 0xA0, 0x00};
    quick.Take(rate, sizeof rate, 200);
    quick.Advance(200.02);
    EXPECT_EQ(quick.FrontSize(), 32768u);
    for (double now_s = 200.1; now_s < 203; now_s += 0.1) quick.Advance(now_s);
    std::size_t waiting = 0;
    for (; quick.FrontSize() > 0; quick.Sent(quick.FrontSize())) waiting += quick.FrontSize();
    EXPECT_EQ(waiting, kMostBuffers * kBusBuffer_bytes);
}

TEST_F(EtherStream, OnASlowWayHalfOfTheBuffersAreLostAndTheOthersWhole) {
    ether::StreamFaults slow;
    slow.slow = true;
    stream.SetFaults(slow);
    std::size_t bytes = 0;
    for (double now_s = 100; now_s < 110; now_s += 0.01) {
        stream.Advance(now_s);
        bytes += TakeAll();
        ASSERT_EQ(bytes % kBusBuffer_bytes, 0u);
    }
    EXPECT_NEAR(static_cast<double>(bytes), 10 * 2048000 / 2.0, kBusBuffer_bytes);
}

TEST_F(EtherStream, GarbageHasTheLengthOfTheSamplesAndNothingOfThem) {
    ether::StreamFaults garbage;
    garbage.garbage = true;
    stream.SetFaults(garbage);
    stream.Advance(100.25);
    ASSERT_EQ(stream.FrontSize(), kBusBuffer_bytes);
    // Every byte as often as any other; samples without a station lie close to the middle.
    std::array<int, 4> quarters{};
    for (std::size_t i = 0; i < stream.FrontSize(); ++i) ++quarters[stream.Front()[i] / 64];
    for (const int count : quarters) EXPECT_NEAR(count, kBusBuffer_bytes / 4.0, 2000);
}

TEST_F(EtherStream, AnotherKindOfServerGreetsOtherwise) {
    const auto Greeting = [this](bool wrong) {
        ether::StreamFaults faults;
        faults.greeting = wrong;
        const CStream greeting(&air, {}, faults, 100);
        return std::string(greeting.Front(), greeting.Front() + greeting.FrontSize());
    };
    EXPECT_EQ(Greeting(false).substr(0, 4), "RTL0");
    EXPECT_EQ(Greeting(true).find("RTL0"), std::string::npos);
    EXPECT_EQ(Greeting(true).size(), Greeting(false).size());
}

TEST_F(EtherStream, AHostThatIsLateIsCountedAndOneThatHurriesIsNot) {
    for (double now_s = 100; now_s < 101; now_s += 0.02) stream.Advance(now_s);
    EXPECT_EQ(stream.Delays(), 0u);
    stream.Advance(101.1);
    stream.Advance(109.1);
    EXPECT_EQ(stream.Delays(), 2u);
    stream.Advance(109.14);
    EXPECT_EQ(stream.Delays(), 2u);
}

TEST_F(EtherStream, AHostThatIsLateLeavesOutWhatItMissed) {
    stream.Advance(100.2);
    TakeAll();
    stream.Advance(107.2);
    EXPECT_NEAR(stream.Late_s(), 7, 0.01);
    EXPECT_LE(TakeAll(), kBusBuffer_bytes);
    stream.Advance(107.4);
    EXPECT_GE(TakeAll(), kBusBuffer_bytes);
    EXPECT_NEAR(stream.Late_s(), 7, 0.01);
}

}  // namespace
