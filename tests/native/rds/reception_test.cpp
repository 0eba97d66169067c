// The decoder on a multiplex: what comes through at which noise.
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "handset/fmdevice/sdr/rds/decoder.h"
#include "tests/native/rds/synthetic_mpx.h"

namespace {

using namespace sdr::rds;
using synthetic::Signal;
using synthetic::Words;

constexpr std::uint16_t kPi = 0xD3C2;

struct Outcome {
    double errors = 0.0;  // shares of the blocks sent
    double wrong = 0.0;
    double whole = 0.0;  // of the groups sent
    double firstPi_s = -1.0;
    Station station;
};

Words RandomGroup(std::mt19937& random) {
    // Of an application, so that nothing is read from it.
    return {kPi, static_cast<std::uint16_t>(0xB000 | (random() & 0x07FF)),
            static_cast<std::uint16_t>(random()), static_cast<std::uint16_t>(random())};
}

struct Count {
    int right = 0, wrong = 0, whole = 0;
};

// How the groups compare with those sent, when bit `shift` of what was sent is the receiver's first.
Count Compare(const std::vector<Words>& sent, const std::vector<Group>& got, std::uint64_t shift) {
    Count count;
    for (const Group& group : got) {
        if (group.firstBit + static_cast<std::int64_t>(shift) < 0) continue;
        const std::uint64_t bit =
            static_cast<std::uint64_t>(group.firstBit + static_cast<std::int64_t>(shift));
        const std::uint64_t n = bit / kGroupBits;
        const bool aligned = bit % kGroupBits == 0 && n < sent.size();
        int right = 0;
        for (std::size_t i = 0; i < kGroupBlocks; ++i) {
            if (!group.blocks[i].Received()) continue;
            const bool same = aligned && group.blocks[i].information == sent[n][i];
            right += same ? 1 : 0;
            count.wrong += same ? 0 : 1;
        }
        count.right += right;
        count.whole += right == 4 ? 1 : 0;
    }
    return count;
}

Outcome Receive(const Signal& signal, double seconds) {
    synthetic::Multiplex multiplex(signal);
    std::mt19937 random(signal.seed + 1);
    std::vector<Words> sent(static_cast<std::size_t>(seconds * kBitRate_Hz / kGroupBits));
    for (Words& group : sent) {
        group = RandomGroup(random);
        multiplex.Send(group);
    }
    std::vector<Group> got;
    CDecoder decoder([&got](const Group& group) { got.push_back(group); });
    Outcome outcome;
    while (!multiplex.Done()) {
        decoder.Feed(multiplex.Next());
        if (outcome.firstPi_s < 0.0 && decoder.Current().pi == kPi) outcome.firstPi_s = multiplex.Time_s();
    }
    Count best;
    for (std::uint64_t shift = 0; shift < 4 * kGroupBits; ++shift) {
        const Count count = Compare(sent, got, shift);
        if (count.right > best.right) best = count;
    }
    const auto blocks = static_cast<double>(4 * sent.size());
    outcome.errors = 1.0 - best.right / blocks;
    outcome.wrong = best.wrong / blocks;
    outcome.whole = best.whole / static_cast<double>(sent.size());
    outcome.station = decoder.Current();
    return outcome;
}

Signal At(double carrierToNoise_dBHz) {
    Signal signal;
    signal.carrierToNoise_dBHz = carrierToNoise_dBHz;
    return signal;
}

TEST(RdsReception, OneBlockOfAHundredIsLostAt70AndHalfOfThemAt66) {
    const Outcome at70 = Receive(At(70.0), 30.0);
    EXPECT_LE(at70.errors, 0.01);
    EXPECT_LE(at70.wrong, 0.005);
    const Outcome at68 = Receive(At(68.0), 20.0);
    EXPECT_LE(at68.errors, 0.10);
    EXPECT_LE(at68.wrong, 0.005);
    EXPECT_GE(at68.whole, 0.70);
    const Outcome at66 = Receive(At(66.0), 20.0);
    EXPECT_LE(at66.errors, 0.50);
    EXPECT_LE(at66.wrong, 0.005);
}

TEST(RdsReception, WrongBlocksStayFewWhereHardlyAnythingComesThrough) {
    for (const double level : {63.0, 64.5}) {
        const Outcome outcome = Receive(At(level), 15.0);
        EXPECT_LE(outcome.wrong, 0.005) << level;
    }
}

TEST(RdsReception, WithoutAPilotOrBesideItsHarmonicNineOfTenBlocksComeAt69) {
    Signal mono = At(69.0);
    mono.pilot_kHz = 0.0;
    mono.pilotKnown = false;
    EXPECT_LE(Receive(mono, 10.0).errors, 0.10);
    for (const double offset : {-6.0, 6.0}) {
        Signal beside = At(69.0);
        beside.offset_Hz = offset;
        EXPECT_LE(Receive(beside, 10.0).errors, 0.10) << offset;
        beside.pilotKnown = false;
        beside.clock_ppm = offset < 0.0 ? -100.0 : 100.0;
        EXPECT_LE(Receive(beside, 10.0).errors, 0.10) << offset;
    }
}

TEST(RdsReception, AWeakSubcarrierOneInQuadratureAndAClockThatIsOffLoseNothing) {
    Signal weak = At(76.0);
    weak.rds_kHz = 1.2;
    EXPECT_LE(Receive(weak, 12.0).errors, 0.01);
    Signal quadrature = At(72.0);
    quadrature.phase_turns = 0.25;
    EXPECT_LE(Receive(quadrature, 12.0).errors, 0.01);
    Signal off = At(72.0);
    off.clock_ppm = 80.0;
    EXPECT_LE(Receive(off, 12.0).errors, 0.01);
}

TEST(RdsReception, AFullDifferenceSignalNextToTheSubcarrierDoesNotHarm) {
    Signal signal = At(80.0);
    signal.tone_kHz = 60.0;
    EXPECT_LE(Receive(signal, 10.0).errors, 0.01);
}

TEST(RdsReception, ThePiCodeIsThereIn300MillisecondsAt72AndIn1500At68) {
    for (std::uint32_t seed = 1; seed <= 8; ++seed) {
        Signal signal = At(72.0);
        signal.seed = seed;
        signal.bitDelay_bits = seed / 8.0;
        const Outcome strong = Receive(signal, 0.6);
        EXPECT_GT(strong.firstPi_s, 0.0) << seed;
        EXPECT_LE(strong.firstPi_s, 0.3) << seed;
        signal.carrierToNoise_dBHz = 68.0;
        const Outcome weak = Receive(signal, 1.8);
        EXPECT_GT(weak.firstPi_s, 0.0) << seed;
        EXPECT_LE(weak.firstPi_s, 1.5) << seed;
    }
}

TEST(RdsReception, OffsetDeviationAndErrorsAreTold) {
    Signal signal = At(76.0);
    signal.offset_Hz = 4.0;
    const Outcome outcome = Receive(signal, 5.0);
    EXPECT_TRUE(outcome.station.signal.inStep);
    EXPECT_NEAR(outcome.station.signal.offset_Hz, 4.0, 0.05);
    EXPECT_NEAR(outcome.station.signal.height_kHz, 2.0, 0.1);
    EXPECT_LT(outcome.station.blockErrorRate, 0.01f);
    EXPECT_GT(outcome.station.blocks, 200u);
}

// Names and texts at a level at which most groups are spoiled: what is shown was sent.
TEST(RdsReception, WhatIsShownWasSentHoweverWeakTheSignal) {
    const std::string name = "KORA ONE";
    const std::string text = "What is shown was sent, however weak the signal.\r   ";
    const auto letters = [](const std::string& of, std::size_t at) {
        return static_cast<std::uint16_t>(static_cast<unsigned char>(of[at]) << 8 |
                                          static_cast<unsigned char>(of[at + 1]));
    };
    std::size_t shown = 0;
    for (const double level : {65.0, 67.0}) {
        synthetic::Multiplex multiplex(At(level));
        for (std::size_t i = 0; i < 300; ++i) {
            const std::size_t n = i / 2;
            if (i % 2 == 0) {
                multiplex.Send({kPi, static_cast<std::uint16_t>(n % 4), 0xE0CD, letters(name, n % 4 * 2)});
            } else {
                const std::size_t part = n % (text.size() / 4);
                multiplex.Send({kPi, static_cast<std::uint16_t>(0x2000 | part), letters(text, 4 * part),
                                letters(text, 4 * part + 2)});
            }
        }
        CDecoder decoder;
        while (!multiplex.Done()) {
            decoder.Feed(multiplex.Next());
            const Station& station = decoder.Current();
            const std::string& part = station.serviceName.letters;
            for (std::size_t i = 0; i < part.size(); ++i)
                ASSERT_TRUE(part[i] == ' ' || part[i] == name[i]) << part;
            for (std::size_t i = 0; i < station.radioText.letters.size(); ++i) {
                const char letter = station.radioText.letters[i];
                ASSERT_TRUE(letter == ' ' || letter == text[i]) << station.radioText.letters;
            }
            if (!station.serviceName.whole.empty()) ASSERT_EQ(station.serviceName.whole, name);
            if (!station.radioText.whole.empty()) ASSERT_EQ(station.radioText.whole, text.substr(0, 48));
            ASSERT_TRUE(!station.pi || *station.pi == kPi);
        }
        shown += decoder.Current().serviceName.whole.empty() ? 0 : 1;
    }
    EXPECT_GE(shown, 1u);
}

// What a decoder received of random groups, second by second.
std::vector<double> SharesBySecond(const Signal& signal, int seconds) {
    synthetic::Multiplex multiplex(signal);
    std::mt19937 random(3);
    for (int i = 0; i < seconds * 12; ++i) multiplex.Send(RandomGroup(random));
    CDecoder decoder;
    std::vector<double> shares;
    std::uint64_t before = 0;
    for (int second = 0; second < seconds; ++second) {
        while (multiplex.Time_s() < second + 1.0) decoder.Feed(multiplex.Next());
        shares.push_back(static_cast<double>(decoder.Current().blocksReceived - before) /
                         (kBitRate_Hz / 26.0));
        before = decoder.Current().blocksReceived;
    }
    return shares;
}

TEST(RdsReception, AFadeCostsWhatFadesAndNoMore) {
    Signal signal = At(74.0);
    signal.silentFrom_s = 3.0;
    signal.silentTo_s = 3.5;
    const std::vector<double> shares = SharesBySecond(signal, 6);
    EXPECT_GT(shares[2], 0.9);
    EXPECT_GT(shares[3], 0.38);
    EXPECT_LT(shares[3], 0.55);
    EXPECT_GT(shares[4], 0.9);
}

TEST(RdsReception, ABitThatSlipsIsFollowedWithinASecond) {
    Signal signal = At(74.0);
    signal.slipAt_s = 3.0;
    const std::vector<double> shares = SharesBySecond(signal, 6);
    EXPECT_GT(shares[2], 0.9);
    EXPECT_GT(shares[4], 0.9);
    EXPECT_GT(shares[5], 0.9);
}

TEST(RdsReception, AnotherStationBeginsFromNothing) {
    Signal signal = At(80.0);
    synthetic::Multiplex first(signal);
    for (int i = 0; i < 20; ++i) first.Send({kPi, 0, 0xE0CD, 0x4142});
    CDecoder decoder;
    while (!first.Done()) decoder.Feed(first.Next());
    EXPECT_EQ(decoder.Current().pi, kPi);
    decoder.Restart();
    EXPECT_FALSE(decoder.Current().pi);
    EXPECT_EQ(decoder.Current().blocks, 0u);
    synthetic::Multiplex second(signal);
    for (int i = 0; i < 20; ++i) second.Send({0x1234, 0, 0xE0CD, 0x4142});
    while (!second.Done()) decoder.Feed(second.Next());
    EXPECT_EQ(decoder.Current().pi, 0x1234);
}

}  // namespace
