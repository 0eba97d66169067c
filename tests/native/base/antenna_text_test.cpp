// What people may write for an antenna, and what they are told of what they may not.
#include "handset/base/antenna_text.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using handset::Antenna;
using handset::AntennaKind;

Antenna Read(const std::string& text) {
    Antenna antenna;
    EXPECT_EQ(handset::ParseAntenna(text, &antenna), "") << text;
    return antenna;
}

std::string Fault(const std::string& text) {
    Antenna antenna;
    const std::string fault = handset::ParseAntenna(text, &antenna);
    EXPECT_EQ(antenna.kind, AntennaKind::kBand) << text;
    return fault;
}

TEST(AntennaText, NothingAndBandAreTheSimulatedBand) {
    EXPECT_EQ(Read("").kind, AntennaKind::kBand);
    EXPECT_EQ(Read("band").kind, AntennaKind::kBand);
}

TEST(AntennaText, AServerIsOnThisMachineAtTheUsualPortUnlessItIsSaid) {
    struct Row {
        const char* text;
        const char* host;
        int port;
    };
    constexpr Row kRows[] = {
        {"rtl_tcp", "127.0.0.1", 1234},
        {"rtl_tcp:", "127.0.0.1", 1234},
        {"rtl_tcp:attic", "attic", 1234},
        {"rtl_tcp::4321", "127.0.0.1", 4321},
        {"rtl_tcp:10.0.0.7:80", "10.0.0.7", 80},
        {"rtl_tcp:[::1]", "::1", 1234},
        {"rtl_tcp:[fe80::1]:65535", "fe80::1", 65535},
    };
    for (const Row& row : kRows) {
        const Antenna antenna = Read(row.text);
        EXPECT_EQ(antenna.kind, AntennaKind::kRtlTcp) << row.text;
        EXPECT_EQ(antenna.host, row.host) << row.text;
        EXPECT_EQ(antenna.port, row.port) << row.text;
    }
}

TEST(AntennaText, AFileMaySayWhatItDoesNotKnowOfItself) {
    const Antenna plain = Read("file:/music/air.cu8");
    EXPECT_EQ(plain.kind, AntennaKind::kFile);
    EXPECT_EQ(plain.path, "/music/air.cu8");
    EXPECT_FALSE(plain.rate_Hz);
    const Antenna told = Read("file:C:\\air.bin;rate=1920000;centre=98.5e6;form=cs16");
    EXPECT_EQ(told.path, "C:\\air.bin");
    EXPECT_EQ(told.rate_Hz, 1920000.0);
    EXPECT_EQ(told.centre_Hz, 98500000.0);
    EXPECT_EQ(told.form, "cs16");
}

TEST(AntennaText, WhatIsWrongIsSaidAndTheBandPlays) {
    EXPECT_EQ(Fault("wire"), "\"wire\" is no antenna: band, rtl_tcp:HOST:PORT or file:PATH");
    EXPECT_EQ(Fault("rtl_tcp:attic:"), "\"\" is no port: 1 to 65535");
    EXPECT_EQ(Fault("rtl_tcp:attic:0"), "\"0\" is no port: 1 to 65535");
    EXPECT_EQ(Fault("rtl_tcp:attic:65536"), "\"65536\" is no port: 1 to 65535");
    EXPECT_EQ(Fault("rtl_tcp:fe80::1:9"), "an address with colons stands in brackets: [fe80::1:9]");
    EXPECT_EQ(Fault("rtl_tcp:[::1"), "the bracket of \"[::1\" is not closed");
    EXPECT_EQ(Fault("rtl_tcp:a b"), "\"a b\" is no name of a host");
    EXPECT_EQ(Fault("file:"), "file: needs the path of a file");
    EXPECT_EQ(Fault("file:a;rate=fast"), "\"rate=fast\" is no frequency in Hz");
    EXPECT_EQ(Fault("file:a;centre="), "\"centre=\" is no frequency in Hz");
    EXPECT_EQ(Fault("file:a;form=mp3"), "\"mp3\" is no form of samples: cu8, cs8, cs16 or cf32");
    EXPECT_EQ(Fault("file:a;loud"), "\"loud\" is none of rate=, centre= and form=");
}

TEST(AntennaText, NoTextWhateverBringsTheReaderDown) {
    const std::string pieces[] = {
        "rtl_tcp", ":",   "[", "]",           "file:", ";", "rate=", "centre=",
        "form=",   "cu8", "1", "99999999999", "-",     "e", "\xFF",  std::string(1, '\0'),
        " "};
    std::mt19937 random(7);
    for (int i = 0; i < 200000; ++i) {
        std::string text;
        for (std::uint32_t n = random() % 9; n > 0; --n) text += pieces[random() % std::size(pieces)];
        Antenna antenna;
        const bool good = handset::ParseAntenna(text, &antenna).empty();
        ASSERT_TRUE(good || antenna.kind == AntennaKind::kBand) << text;
        ASSERT_TRUE(antenna.kind != AntennaKind::kRtlTcp || (antenna.port != 0 && !antenna.host.empty()))
            << text;
    }
}

}  // namespace
