// Greeting and commands, byte by byte.
#include "handset/fmdevice/sdr/rtl_tcp_protocol.h"

#include <gmock/gmock.h>

#include <random>

namespace {

using namespace sdr::rtl_tcp;
using testing::ElementsAre;

const std::vector<std::uint8_t> kGreeting = {'R', 'T', 'L', '0', 0, 0, 0, 5, 0, 0, 0, 29, 127, 128};

TEST(RtlTcp, TheGreetingTellsTunerAndGainsAndEndsAfterTwelveBytes) {
    CHeaderReader reader;
    EXPECT_EQ(reader.Feed(kGreeting.data(), kGreeting.size()), kHeaderBytes);
    EXPECT_EQ(reader.Where(), CHeaderReader::State::kDone);
    EXPECT_EQ(reader.Result().tuner, Tuner::kR820t);
    EXPECT_EQ(reader.Result().gains, 29u);
    EXPECT_EQ(NameOf(reader.Result().tuner), "R820T");
}

TEST(RtlTcp, TheGreetingMayComeInPieces) {
    CHeaderReader reader;
    for (std::size_t i = 0; i < kHeaderBytes; ++i) {
        EXPECT_EQ(reader.Where(), CHeaderReader::State::kMore);
        EXPECT_EQ(reader.Feed(kGreeting.data() + i, 1), 1u);
    }
    EXPECT_EQ(reader.Where(), CHeaderReader::State::kDone);
    EXPECT_EQ(reader.Feed(kGreeting.data() + 12, 2), 0u);
}

TEST(RtlTcp, AnotherGreetingIsWrongAtItsFirstWrongByte) {
    CHeaderReader reader;
    const std::uint8_t other[] = {'R', 'T', 'L', '1'};
    EXPECT_EQ(reader.Feed(other, 4), 3u);
    EXPECT_EQ(reader.Where(), CHeaderReader::State::kWrong);
}

TEST(RtlTcp, ATunerThatNobodyKnowsIsUnknown) {
    std::vector<std::uint8_t> bytes = kGreeting;
    bytes[4] = 0x80;
    CHeaderReader reader;
    reader.Feed(bytes.data(), bytes.size());
    EXPECT_EQ(reader.Result().tuner, Tuner::kUnknown);
    EXPECT_EQ(NameOf(static_cast<Tuner>(99)), "unknown");
}

TEST(RtlTcp, ACommandIsItsNumberAndTheArgumentWithTheHighestByteFirst) {
    EXPECT_THAT(Encode(Command::kFrequency_Hz, 98500000), ElementsAre(0x01, 0x05, 0xDE, 0xFD, 0xA0));
    EXPECT_THAT(Encode(Command::kCorrection_ppm, static_cast<std::uint32_t>(-3)),
                ElementsAre(0x05, 0xFF, 0xFF, 0xFF, 0xFD));
}

TEST(RtlTcp, AStickIsToldItsRateFirstAndItsFrequencyLast) {
    Settings settings;
    settings.frequency_Hz = 100000000;
    settings.gainIndex = 12;
    settings.biasTee = true;
    std::vector<std::uint8_t> order;
    const std::vector<std::uint8_t> bytes = Opening(settings);
    ASSERT_EQ(bytes.size() % kCommandBytes, 0u);
    for (std::size_t i = 0; i < bytes.size(); i += kCommandBytes) order.push_back(bytes[i]);
    EXPECT_THAT(order, ElementsAre(0x02, 0x03, 0x08, 0x0D, 0x05, 0x0E, 0x01));
    EXPECT_EQ(bytes[9], 1);    // gain by hand
    EXPECT_EQ(bytes[19], 12);  // its index
    settings.gainIndex.reset();
    EXPECT_EQ(Opening(settings)[9], 0);
}

TEST(RtlTcp, OnlyTheRatesOfTheChipArePossible) {
    for (const std::uint32_t rate_Hz : {225001u, 240000u, 300000u, 900001u, 1920000u, 3200000u})
        EXPECT_TRUE(RateIsPossible(rate_Hz));
    for (const std::uint32_t rate_Hz : {0u, 225000u, 300001u, 900000u, 3200001u})
        EXPECT_FALSE(RateIsPossible(rate_Hz));
}

TEST(RtlTcp, AMillionRandomGreetingsEndWrongOrDone) {
    std::mt19937 random(1);
    for (int i = 0; i < 1000000; ++i) {
        CHeaderReader reader;
        std::array<std::uint8_t, 16> bytes{'R', 'T', 'L', '0'};
        for (std::size_t k = random() % 5; k < bytes.size(); ++k)
            bytes[k] = static_cast<std::uint8_t>(random());
        const std::size_t first = random() % (bytes.size() + 1);
        const std::size_t taken = reader.Feed(bytes.data(), first);
        reader.Feed(bytes.data() + taken, bytes.size() - taken);
        ASSERT_NE(reader.Where(), CHeaderReader::State::kMore);
    }
}

}  // namespace
