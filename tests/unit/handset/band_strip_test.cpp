// What the strip of the band shows, and what a touch of it means.
#include "handset/phone/band_strip.h"

#include <gtest/gtest.h>

#include <cmath>

#include "handset/fmdevice/band/band_file.h"

namespace panel {
namespace {

using handset::kLevelNotSeen;
using handset::ReceptionState;

constexpr Box kStrip = {14, 100, 470, kBandHeight};

std::size_t PlaceOfChannel(std::uint32_t channel_10kHz) {
    return (channel_10kHz - handset::kFirstBandChannel_10kHz) / handset::kBandStep_10kHz;
}

BandFacts Facts(const char* file, std::uint32_t tuned_10kHz) {
    BandFacts facts;
    std::vector<std::string> faults;
    facts.band = fm::ReadBand("band.ini", file, &faults);
    facts.tuned_10kHz = tuned_10kHz;
    return facts;
}

ReceptionState FromTheAir() {
    ReceptionState state;
    state.source = L"127.0.0.1:1234";
    state.condition = L"plays";
    state.channel_10kHz = 9850;
    state.level = 24;
    state.levels[PlaceOfChannel(9850)] = 24;
    state.levels[PlaceOfChannel(9860)] = 1;
    return state;
}

TEST(BandStrip, TheSimulatedBandHasTheLevelsOfItsFileAndNoiseBetween) {
    const BandShown shown =
        ShowBand(Facts("[9850]\nlevel=45\nstereo=1\n[8750]\nlevel=7\n[10800]\nlevel=9\n", 9850));
    EXPECT_EQ(shown.levels[PlaceOfChannel(9850)], 45);
    EXPECT_EQ(shown.levels.front(), 7);
    EXPECT_EQ(shown.levels.back(), 9);
    EXPECT_EQ(shown.levels[PlaceOfChannel(9860)], fm::kNoiseLevel);
    EXPECT_EQ(shown.tuned_10kHz, 9850u);
    EXPECT_EQ(shown.words, L"98.5 MHz   level 45   stereo");
}

TEST(BandStrip, AWeakenedStationStandsAsItIsReceivedAndIsMonoBelowTheThreshold) {
    BandFacts facts = Facts("[9850]\nlevel=45\nstereo=1\n[9900]\nlevel=30\n", 9850);
    facts.limit = 20;
    facts.limited_10kHz = 9850;
    BandShown shown = ShowBand(facts);
    EXPECT_EQ(shown.levels[PlaceOfChannel(9850)], 20);
    EXPECT_EQ(shown.levels[PlaceOfChannel(9900)], 30);
    EXPECT_EQ(shown.words, L"98.5 MHz   level 20   mono");
    facts.limited_10kHz = 0;
    EXPECT_EQ(ShowBand(facts).levels[PlaceOfChannel(9900)], 20);
}

TEST(BandStrip, WithoutARadioNothingIsTuned) {
    const BandShown shown = ShowBand(Facts("[9850]\nlevel=45\n", 0));
    EXPECT_EQ(shown.tuned_10kHz, 0u);
    EXPECT_EQ(shown.words, L"");
    EXPECT_EQ(shown.levels[PlaceOfChannel(9850)], 45);
}

TEST(BandStrip, WhatAnAntennaGivesIsShownAndTheRestIsNotSeen) {
    BandFacts facts = Facts("[10100]\nlevel=90\n", 9850);
    facts.reception = FromTheAir();
    facts.reception->stereo = true;
    facts.reception->carrierToNoise_dBHz = 72.14;
    facts.reception->offset_Hz = 1200;
    facts.reception->blockErrors_percent = 3;
    facts.reception->pi = 0xD301;
    facts.reception->trafficProgramme = true;
    const BandShown shown = ShowBand(facts);
    EXPECT_EQ(shown.levels[PlaceOfChannel(9850)], 24);
    EXPECT_EQ(shown.levels[PlaceOfChannel(10100)], kLevelNotSeen);
    EXPECT_EQ(shown.words,
              L"98.5 MHz   level 24   C/N0 72.1 dB-Hz   stereo   +1200 Hz   3 % lost   PI D301   TP");
}

TEST(BandStrip, ATrafficProgrammeAndItsAnnouncementAreShownEachByItself) {
    BandFacts facts = Facts("", 9850);
    facts.reception = FromTheAir();
    facts.reception->trafficAnnouncement = true;
    EXPECT_EQ(ShowBand(facts).words, L"98.5 MHz   level 24   mono   TA");
    facts.reception->trafficProgramme = true;
    EXPECT_EQ(ShowBand(facts).words, L"98.5 MHz   level 24   mono   TP   TA");
}

TEST(BandStrip, WhatIsNotKnownIsNotSaid) {
    BandFacts facts = Facts("", 9850);
    facts.reception = FromTheAir();
    EXPECT_EQ(ShowBand(facts).words, L"98.5 MHz   level 24   mono");
}

TEST(BandStrip, AnAntennaThatDoesNotPlaySaysWhy) {
    BandFacts facts = Facts("[9850]\nlevel=45\n", 9850);
    facts.reception = FromTheAir();
    facts.reception->condition = L"no connection to 127.0.0.1:1234";
    const BandShown shown = ShowBand(facts);
    EXPECT_EQ(shown.words, L"no connection to 127.0.0.1:1234");
    EXPECT_EQ(shown.tuned_10kHz, 9850u);
}

TEST(BandStrip, ASimulatedBandThatPlaysInPlaceOfAnAntennaSaysWhy) {
    BandFacts facts = Facts("[9850]\nlevel=45\n", 9850);
    facts.reception = FromTheAir();
    facts.reception->source = L"band";
    facts.reception->condition = L"the clock's rate is not 1: the simulated band plays";
    const BandShown shown = ShowBand(facts);
    EXPECT_EQ(shown.words, L"the clock's rate is not 1: the simulated band plays");
    EXPECT_EQ(shown.tuned_10kHz, 9850u);
    EXPECT_EQ(shown.levels[PlaceOfChannel(9850)], 24);
}

TEST(BandStrip, ATunerThatPublishesTheSimulatedBandWithoutLevelsHasThoseOfTheFile) {
    BandFacts facts = Facts("[9850]\nlevel=45\n", 9850);
    facts.reception = ReceptionState();
    facts.reception->source = L"band";
    facts.reception->channel_10kHz = 9850;
    facts.reception->level = 44;
    const BandShown shown = ShowBand(facts);
    EXPECT_EQ(shown.levels[PlaceOfChannel(9850)], 45);
    EXPECT_EQ(shown.words, L"98.5 MHz   level 44   mono");
}

TEST(BandStrip, EveryChannelHasItsPlaceAndIsTouchedThere) {
    BandShown shown;
    shown.levels.fill(0);
    const Box bars = BandBars(kStrip);
    for (std::uint32_t channel = 8750; channel <= 10800; channel += 10) {
        const double place = BandPlace(kStrip, channel);
        EXPECT_GE(place, bars.x);
        EXPECT_LE(place, bars.Right());
        const auto touched = BandChannelAt(kStrip, shown, static_cast<int>(place), bars.y + 3);
        ASSERT_TRUE(touched);
        // A channel is some two pixels wide.
        EXPECT_LE(std::abs(static_cast<int>(*touched) - static_cast<int>(channel)), 10) << channel;
    }
    EXPECT_EQ(BandChannelAt(kStrip, shown, bars.x, bars.y), 8750u);
    EXPECT_EQ(BandChannelAt(kStrip, shown, bars.Right() - 1, bars.y), 10800u);
}

TEST(BandStrip, AStylusNearAStationMeansTheStationTheStrongestOfSeveral) {
    BandShown shown;
    shown.levels.fill(fm::kNoiseLevel);
    shown.levels[PlaceOfChannel(9850)] = 40;
    const int place = static_cast<int>(BandPlace(kStrip, 9850));
    for (const int away : {-3, 0, 3})
        EXPECT_EQ(BandChannelAt(kStrip, shown, place + away, 110), 9850u) << away;
    EXPECT_NE(BandChannelAt(kStrip, shown, place + 8, 110), 9850u);
    shown.levels[PlaceOfChannel(9860)] = 60;
    EXPECT_EQ(BandChannelAt(kStrip, shown, place, 110), 9860u);
    // What nobody has looked at is no station.
    shown.levels[PlaceOfChannel(9860)] = kLevelNotSeen;
    EXPECT_EQ(BandChannelAt(kStrip, shown, place, 110), 9850u);
}

TEST(BandStrip, BesideTheBarsNothingIsTouched) {
    const BandShown shown;
    const Box bars = BandBars(kStrip);
    EXPECT_FALSE(BandChannelAt(kStrip, shown, bars.x - 1, bars.y));
    EXPECT_FALSE(BandChannelAt(kStrip, shown, bars.Right(), bars.y));
    EXPECT_FALSE(BandChannelAt(kStrip, shown, bars.x + 5, kStrip.y - 1));
    EXPECT_FALSE(BandChannelAt(kStrip, shown, bars.x + 5, kStrip.Bottom()));
}

TEST(BandStrip, AChannelIsTypedAsTheRadioWantsIt) {
    using Keys = std::vector<PhoneKey>;
    EXPECT_EQ(DigitsOf(9850), (Keys{PhoneKey::k9, PhoneKey::k8, PhoneKey::k5}));
    EXPECT_EQ(DigitsOf(8750), (Keys{PhoneKey::k8, PhoneKey::k7, PhoneKey::k5}));
    EXPECT_EQ(DigitsOf(10120), (Keys{PhoneKey::k1, PhoneKey::k0, PhoneKey::k1, PhoneKey::k2}));
    EXPECT_EQ(DigitsOf(10000), (Keys{PhoneKey::k1, PhoneKey::k0, PhoneKey::k0, PhoneKey::k0}));
}

}  // namespace
}  // namespace panel
