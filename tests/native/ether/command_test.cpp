// The bytes that a client sends to the ether, and what the stick makes of them.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "handset/ether/air.h"
#include "handset/ether/command_reader.h"
#include "handset/ether/stick.h"
#include "handset/fmdevice/sdr/rtl_tcp_protocol.h"
#include "tests/native/fuzz_inputs.h"

namespace {

using ether::CCommandReader;
using ether::Command;
using ether::CStick;

std::vector<Command> Read(CCommandReader& reader, const std::vector<std::uint8_t>& bytes) {
    std::vector<Command> commands;
    reader.Feed(bytes.data(), bytes.size(), &commands);
    return commands;
}

void Apply(CStick& stick, const std::vector<std::uint8_t>& bytes) {
    CCommandReader reader;
    for (const Command& command : Read(reader, bytes)) stick.Apply(command);
}

TEST(EtherCommands, AreReadHoweverTheirBytesAreCut) {
    const std::vector<std::uint8_t> bytes = {0x01, 0x05, 0xDF, 0x2C, 0xA0, 0x05, 0xFF, 0xFF, 0xFF, 0xFE};
    CCommandReader reader;
    std::vector<Command> commands;
    for (const std::uint8_t byte : bytes) reader.Feed(&byte, 1, &commands);
    ASSERT_EQ(commands.size(), 2u);
    EXPECT_EQ(commands[0].id, 1);
    EXPECT_EQ(commands[0].argument, 98512032u);
    EXPECT_EQ(static_cast<std::int32_t>(commands[1].argument), -2);
}

TEST(EtherCommands, TheGreetingIsThatOfAnR820tWith29StepsOfGain) {
    const auto greeting = CStick::Greeting();
    sdr::rtl_tcp::CHeaderReader reader;
    EXPECT_EQ(reader.Feed(greeting.data(), greeting.size()), sdr::rtl_tcp::kHeaderBytes);
    EXPECT_EQ(reader.Where(), sdr::rtl_tcp::CHeaderReader::State::kDone);
    EXPECT_EQ(reader.Result().tuner, sdr::rtl_tcp::Tuner::kR820t);
    EXPECT_EQ(reader.Result().gains, 29u);
}

TEST(EtherCommands, TheStickDoesWhatAClientOpensItWith) {
    sdr::rtl_tcp::Settings settings;
    settings.frequency_Hz = 98300000;
    settings.rate_Hz = 1920000;
    settings.gainIndex = 16;
    settings.correction_ppm = -7;
    CStick stick;
    Apply(stick, sdr::rtl_tcp::Opening(settings));
    const ether::Window window = stick.View();
    EXPECT_EQ(window.rate_Hz, 1920000u);
    EXPECT_NEAR(window.centre_Hz, 98300000 * (1 + 7e-6), 0.01);
    ASSERT_TRUE(window.gain_dB.has_value());
    EXPECT_DOUBLE_EQ(*window.gain_dB, 29.7);
    EXPECT_NEAR(window.clockError_ppm, 7, 1e-9);
}

TEST(EtherCommands, AGainInTenthsTakesTheNearestStep) {
    CStick stick;
    stick.Apply({0x03, 1});
    for (const auto& [wanted, step] : {std::pair{0, 0.0}, {300, 29.7}, {9999, 49.6}, {-50, 0.0}}) {
        stick.Apply({0x04, static_cast<std::uint32_t>(wanted)});
        EXPECT_DOUBLE_EQ(stick.View().gain_dB.value_or(-1), step);
    }
    stick.Apply({0x03, 0});
    EXPECT_FALSE(stick.View().gain_dB.has_value());
}

TEST(EtherCommands, WhatAStickCannotDoIsPassedOver) {
    CStick stick;
    stick.Apply({0x02, 1920000});
    stick.Apply({0x01, 98500000});
    for (const Command& command : {Command{0x02, 0}, Command{0x02, 225000}, Command{0x02, 600000},
                                   Command{0x02, 3200001}, Command{0x01, 1000}, Command{0x01, 0xFFFFFFFF},
                                   Command{0x0D, 29}, Command{0x05, 0x7FFFFFFF}, Command{0x77, 5}}) {
        stick.Apply(command);
    }
    EXPECT_EQ(stick.View().rate_Hz, 1920000u);
    EXPECT_EQ(stick.View().centre_Hz, 98500000);
}

TEST(EtherCommands, AnOddRateBecomesTheNearestWholeKilohertz) {
    CStick stick;
    stick.Apply({0x02, 1920499});
    EXPECT_EQ(stick.View().rate_Hz, 1920000u);
    stick.Apply({0x02, 225001});
    EXPECT_EQ(stick.View().rate_Hz, 225000u);
}

// A client that sends anything at all. The window that comes of it is one that can be shown.
TEST(EtherCommands, AnyBytesLeaveAStickThatCanBeUsed) {
    std::mt19937 random(15);
    CStick stick;
    CCommandReader reader;
    for (std::uint64_t input = 0; input < test::FuzzInputs(1000000); ++input) {
        std::vector<std::uint8_t> bytes(random() % 12);
        for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
        // Half of them begin as a command that there is.
        if (!bytes.empty() && input % 2 == 0) bytes[0] = static_cast<std::uint8_t>(1 + random() % 14);
        for (const Command& command : Read(reader, bytes)) stick.Apply(command);
        const ether::Window window = stick.View();
        ASSERT_GE(window.rate_Hz, 225000u);
        ASSERT_LE(window.rate_Hz, 3200000u);
        ASSERT_EQ(window.rate_Hz % 1000, 0u);
        ASSERT_GT(window.centre_Hz, 23e6);
        ASSERT_LT(window.centre_Hz, 1770e6);
        ASSERT_LE(std::abs(window.clockError_ppm), 1000);
    }
}

// The windows of that, with something in the air.
TEST(EtherCommands, AnyWindowCanBeShown) {
    std::mt19937 random(16);
    ether::CAir air([](const std::string&) { return fm::MakeGenerator({}); }, 1795435200, 2);
    fm::Band band;
    for (std::uint32_t channel = 8750; channel <= 10800; channel += 20) band.stations[channel].level = 40;
    air.SetBand(band);
    CStick stick;
    for (std::uint64_t input = 0; input < test::FuzzInputs(300); ++input) {
        stick.Apply({0x02, static_cast<std::uint32_t>(random() % 2 == 0 ? 225001 + random() % 75000
                                                                        : 900001 + random() % 2300000)});
        stick.Apply({0x01, static_cast<std::uint32_t>(random() % 4 == 0 ? random()
                                                                        : 87500000 + random() % 20500000)});
        stick.Apply({0x0D, static_cast<std::uint32_t>(random() % 30)});
        stick.Apply({0x03, static_cast<std::uint32_t>(random() % 2)});
        stick.Apply({0x05, static_cast<std::uint32_t>(random() % 200) - 100});
        air.SetWindow(stick.View());
        std::vector<std::uint8_t> bytes;
        const std::size_t samples = air.Read(&bytes);
        ASSERT_EQ(bytes.size(), 2 * samples);
        ASSERT_EQ(samples, stick.View().rate_Hz / 1000 * 3);
    }
}

}  // namespace
