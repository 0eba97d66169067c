// How long it takes to another station, and across the band, on a stick's own buffers.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>

#include "tests/native/antenna/ether_radio.h"

namespace {

using test::EtherRadio;

// What a stick's server hands on at a time, and what an ether does that is to be quick.
constexpr std::size_t kBusBuffer_bytes = 262144;
constexpr std::size_t kSmallBuffer_bytes = 32768;

constexpr char kTwoStations[] =
    "[9850]\nlevel=45\nps=KORA ONE\nprogramme=tone:1000\n"
    "[10400]\nlevel=45\nps=KORA TWO\nprogramme=tone:500\n";

double Tone(const std::vector<float>& frames, std::size_t from, std::size_t count, double frequency_Hz) {
    std::complex<double> sum;
    for (std::size_t i = 0; i < count; ++i) {
        const double turns = frequency_Hz * static_cast<double>(i) / sound::kSampleRate_Hz;
        sum += static_cast<double>(frames[2 * (from + i)]) * std::polar(1.0, -6.283185307179586 * turns);
    }
    return 2.0 * std::abs(sum) / static_cast<double>(count);
}

struct Retuned {
    double sound_s = 9.0;
    double level_s = 9.0;
    double tone = 0.0;    // of the new station, right from its beginning
    double before = 1.0;  // of the one before, there
};

Retuned Retune(EtherRadio& radio, std::uint32_t channel_10kHz, double tone_Hz, double before_Hz) {
    Retuned result;
    const double began_s = radio.Now_s();
    radio.Tune(channel_10kHz);
    while (radio.Now_s() < began_s + 0.6) {
        radio.Run(0.005);
        if (radio.Receiver().Snapshot().measured)
            result.level_s = std::min(result.level_s, radio.Now_s() - began_s);
    }
    const std::vector<float> heard = radio.HeardSince(began_s);
    const auto first = std::find_if(heard.begin(), heard.end(), [](float v) { return std::fabs(v) > 0.02F; });
    const auto frame = static_cast<std::size_t>(first - heard.begin()) / 2;
    constexpr std::size_t kBeginning = sound::kSampleRate_Hz / 20;
    if (frame + kBeginning > heard.size() / 2) return result;
    result.sound_s = static_cast<double>(frame) / sound::kSampleRate_Hz;
    result.tone = Tone(heard, frame, kBeginning, tone_Hz);
    result.before = Tone(heard, frame, kBeginning, before_Hz);
    return result;
}

void RetuneFiveTimes(std::size_t buffer_bytes) {
    EtherRadio radio(kTwoStations, buffer_bytes);
    radio.Tune(9850);
    radio.Run(1.0);
    for (int round = 0; round < 5; ++round) {
        const bool up = round % 2 == 0;
        const Retuned retuned = Retune(radio, up ? 10400 : 9850, up ? 500 : 1000, up ? 1000 : 500);
        EXPECT_LE(retuned.sound_s, 0.3) << round;
        EXPECT_LE(retuned.level_s, 0.2) << round;
        EXPECT_GT(retuned.tone, 0.3) << round;
        EXPECT_LT(retuned.before, 0.03) << round;
        // Another moment of the server's buffer each time.
        radio.Run(0.015);
    }
    EXPECT_EQ(radio.Gaps(), 0u);
}

// As a seek goes: the next look is ordered the moment that the one before has been seen.
struct Sought {
    fm::CBandSeek::Where where = fm::CBandSeek::Where::kUnknown;
    std::uint32_t channel_10kHz = 0;
    int looks = 0;
    double took_s = 0.0;
};

Sought Seek(EtherRadio& radio, std::uint32_t from_10kHz, bool up) {
    fm::CBandSeek seek(from_10kHz, up);
    Sought sought;
    const double began_s = radio.Now_s();
    const std::uint64_t since_ms = radio.Now_ms() - 2000;
    while (sought.took_s < 3.0) {
        sought.where = seek.GoOn(radio.Band(), since_ms);
        sought.channel_10kHz = seek.Channel_10kHz();
        if (sought.where != fm::CBandSeek::Where::kUnknown) break;
        ++sought.looks;
        radio.Receiver().Look(seek.Centre_Hz(radio.Receiver().HalfWidth_Hz()));
        do {
            radio.Run(0.005);
            sought.took_s = radio.Now_s() - began_s;
        } while (!radio.Receiver().LookDone() && sought.took_s < 3.0);
    }
    return sought;
}

void CrossAnEmptyBand(std::size_t buffer_bytes) {
    EtherRadio radio("[9850]\nlevel=45\nprogramme=tone:1000\n", buffer_bytes);
    radio.Tune(9850);
    radio.Run(1.0);
    const Sought sought = Seek(radio, 9850, true);
    EXPECT_EQ(sought.where, fm::CBandSeek::Where::kNothing);
    EXPECT_LE(sought.looks, 13);
    EXPECT_LE(sought.took_s, 0.93);
}

void SeekRoundTheBand(std::size_t buffer_bytes) {
    EtherRadio radio("[8760]\nlevel=45\n[9850]\nlevel=45\n[10790]\nlevel=35\n", buffer_bytes);
    radio.Tune(9850);
    radio.Run(1.0);
    std::uint32_t at_10kHz = 9850;
    const std::pair<bool, std::uint32_t> kSeeks[] = {{true, 10790}, {true, 8760},   {true, 9850},
                                                     {false, 8760}, {false, 10790}, {false, 9850}};
    for (const auto& [up, next_10kHz] : kSeeks) {
        const Sought sought = Seek(radio, at_10kHz, up);
        EXPECT_EQ(sought.channel_10kHz, next_10kHz) << "from " << at_10kHz;
        at_10kHz = next_10kHz;
        radio.Tune(at_10kHz);
        radio.Run(0.3);
    }
}

TEST(Retuning, OnAStickAStationIsHeardAloneWithinThreeTenthsOfASecondAndItsLevelWithinTwo) {
    RetuneFiveTimes(kBusBuffer_bytes);
}

TEST(Retuning, OnSmallBuffersNoLater) {
    RetuneFiveTimes(kSmallBuffer_bytes);
}

TEST(Retuning, OnAStickAnEmptyBandIsCrossedWithinASecond) {
    CrossAnEmptyBand(kBusBuffer_bytes);
}

TEST(Retuning, OnAStickEachSeekFindsTheNextStation) {
    SeekRoundTheBand(kBusBuffer_bytes);
}

TEST(Retuning, OnSmallBuffersEachSeekFindsTheNextStation) {
    SeekRoundTheBand(kSmallBuffer_bytes);
}

// A converter that is overdriven, until its gain is held right, shows stations where there are none.
void SeekToStrongStations(std::size_t buffer_bytes) {
    for (std::uint32_t from_10kHz = 8760; from_10kHz <= 8840; from_10kHz += 20) {
        EtherRadio radio("[8760]\nlevel=45\n[9850]\nlevel=60\n[10790]\nlevel=35\n", buffer_bytes);
        radio.HoldGain();
        radio.Tune(from_10kHz);
        radio.Run(0.3);
        const Sought strong = Seek(radio, from_10kHz, true);
        EXPECT_EQ(strong.channel_10kHz, 9850u) << "from " << from_10kHz;
        EXPECT_LE(strong.took_s, 0.93) << "from " << from_10kHz;
        radio.Tune(9850);
        radio.Run(0.1);
        EXPECT_EQ(Seek(radio, 9850, true).channel_10kHz, 10790u) << "from " << from_10kHz;
    }
}

TEST(Retuning, OnAStickAStationThatIsTooStrongAtFirstIsFoundWithoutItsImages) {
    SeekToStrongStations(kBusBuffer_bytes);
}

TEST(Retuning, OnSmallBuffersAStationThatIsTooStrongAtFirstIsFoundWithoutItsImages) {
    SeekToStrongStations(kSmallBuffer_bytes);
}

// Where nothing is the gain rises until any station is too strong, and a good second passes before it is
// right.
void SeekWithAGainThatRose(std::size_t buffer_bytes) {
    EtherRadio radio("[8760]\nlevel=45\nstereo=1\nprogramme=tone:330\n[9850]\nlevel=45\n[10790]\nlevel=35\n",
                     buffer_bytes);
    radio.HoldGain();
    radio.Tune(9300);
    radio.Run(20.9);
    std::uint32_t at_10kHz = 10790;
    for (const std::uint32_t next_10kHz : {8760u, 9850u, 10790u, 8760u}) {
        const Sought sought = Seek(radio, at_10kHz, true);
        EXPECT_EQ(sought.channel_10kHz, next_10kHz) << "from " << at_10kHz;
        EXPECT_LE(sought.took_s, 0.93) << "from " << at_10kHz;
        at_10kHz = next_10kHz;
        radio.Tune(at_10kHz);
        radio.Run(0.1);
    }
}

TEST(Retuning, OnAStickWhoseGainRoseNoImageIsStoppedAtAndNoStationPassedBy) {
    SeekWithAGainThatRose(kBusBuffer_bytes);
}

TEST(Retuning, OnSmallBuffersWithAGainThatRoseNoImageIsStoppedAtAndNoStationPassedBy) {
    SeekWithAGainThatRose(kSmallBuffer_bytes);
}

TEST(Retuning, OnSmallBuffersAnEmptyBandIsCrossedWithinASecond) {
    CrossAnEmptyBand(kSmallBuffer_bytes);
}

}  // namespace
