// The band that the handset comes with.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>

#include "handset/fmdevice/band/band_file.h"

namespace {

class ShippedBand : public testing::Test {
  protected:
    void SetUp() override {
        std::ifstream file(KORA_BAND_FILE, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        ASSERT_FALSE(text.empty());
        band_ = fm::ReadBand("band.ini", text, &faults_);
    }

    fm::Band band_;
    std::vector<std::string> faults_;
};

TEST_F(ShippedBand, IsWithoutFaults) {
    EXPECT_THAT(faults_, testing::IsEmpty());
}

TEST_F(ShippedBand, ReachesFromEndToEndOnTheRaster) {
    EXPECT_GE(band_.stations.size(), 12u);
    EXPECT_EQ(band_.stations.begin()->first, 8760u);
    EXPECT_EQ(band_.stations.rbegin()->first, 10790u);
    for (const auto& [channel, station] : band_.stations) EXPECT_EQ(channel % fm::kRaster_10kHz, 0u);
}

TEST_F(ShippedBand, AlternativesAreStationsOfTheSameName) {
    int lists = 0;
    for (const auto& [channel, station] : band_.stations) {
        for (const auto alternative : station.rds.alternatives_10kHz) {
            ++lists;
            ASSERT_TRUE(band_.stations.count(alternative)) << alternative;
            EXPECT_EQ(band_.stations.at(alternative).rds.serviceNames, station.rds.serviceNames);
        }
    }
    EXPECT_GE(lists, 4);
}

TEST_F(ShippedBand, HasStationsWhoseNamesAndTextsChange) {
    int names = 0, texts = 0;
    for (const auto& [channel, station] : band_.stations) {
        names += station.rds.serviceNames.size() > 1 ? 1 : 0;
        texts += station.rds.radioTexts.size() > 1 ? 1 : 0;
    }
    EXPECT_GE(names, 2);
    EXPECT_GE(texts, 6);
}

TEST_F(ShippedBand, TheWeakStationHasAFarBetterAlternative) {
    const fm::Station& weak = band_.stations.at(9010);
    ASSERT_LE(weak.level, 15);
    int best = 0;
    for (const auto alternative : weak.rds.alternatives_10kHz)
        best = std::max(best, band_.stations.at(alternative).level);
    EXPECT_GE(best, 40);
}

TEST_F(ShippedBand, HasEachSortOfReception) {
    int weak = 0, justAbove = 0, mono = 0, withoutRds = 0;
    std::set<fm::ProgrammeKind> kinds;
    for (const auto& [channel, station] : band_.stations) {
        weak += station.level <= 15 ? 1 : 0;
        justAbove += station.level > 15 && station.level <= 20 ? 1 : 0;
        mono += station.stereo ? 0 : 1;
        withoutRds += station.rds.Sent() ? 0 : 1;
        kinds.insert(station.programme.kind);
        EXPECT_GT(station.level, fm::kSeekThreshold);
    }
    EXPECT_GE(weak, 1);
    EXPECT_GE(justAbove, 1);
    EXPECT_GE(mono, 1);
    EXPECT_GE(withoutRds, 1);
    EXPECT_GE(kinds.size(), 4u);
}

}  // namespace
