// The panel's painter.
#include "handset/phone/canvas.h"

#include <gtest/gtest.h>

#include <vector>

namespace panel {
namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;

class CanvasTest : public testing::Test {
  protected:
    static constexpr int kWidth = 40, kHeight = 30;
    [[nodiscard]] std::uint32_t At(int x, int y) const {
        return pixels_[static_cast<std::size_t>(y * kWidth + x)];
    }

    std::vector<std::uint32_t> pixels_ = std::vector<std::uint32_t>(kWidth * kHeight, kWhite);
    CCanvas canvas_{pixels_.data(), kWidth, kHeight};
};

// Four corners of their own, sides between them, and a middle.
const ArtPicture kFrame = {3,
                           3,
                           {0xFF000001, 0xFF000002, 0xFF000003,  //
                            0xFF000004, 0xFF000005, 0xFF000006,  //
                            0xFF000007, 0xFF000008, 0xFF000009}};

TEST_F(CanvasTest, ARectangleCoversItsPixelsAndNoOthers) {
    canvas_.Fill({10, 5, 20, 10}, Rgb(0x102030));
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const bool inside = x >= 10 && x < 30 && y >= 5 && y < 15;
            EXPECT_EQ(At(x, y), inside ? 0x102030u : kWhite) << x << " " << y;
        }
    }
}

TEST_F(CanvasTest, APixelAtTheEdgeIsCoveredAsFarAsTheRectangleReachesIntoIt) {
    canvas_.Fill({10.5, 5, 1, 10}, Rgb(0x000000));
    EXPECT_EQ(At(9, 8), kWhite);
    EXPECT_EQ(At(10, 8), 0x7F7F7Fu);
    EXPECT_EQ(At(11, 8), 0x7F7F7Fu);
    EXPECT_EQ(At(12, 8), kWhite);
}

TEST_F(CanvasTest, AlphaMixesWithWhatIsBelow) {
    canvas_.Fill({0, 0, 40, 30}, Rgb(0x000000, 0.4));
    EXPECT_EQ(At(3, 3), 0x999999u);
}

TEST_F(CanvasTest, APictureCoversWhatIsBelowAsFarAsItIsOpaque) {
    canvas_.Draw({3, 1, {0xFF102030, 0x00102030, 0x33000000}}, 5, 5);
    EXPECT_EQ(At(4, 5), kWhite);
    EXPECT_EQ(At(5, 5), 0x102030u);
    EXPECT_EQ(At(6, 5), kWhite);
    EXPECT_EQ(At(7, 5), 0xCCCCCCu);
    EXPECT_EQ(At(8, 5), kWhite);
}

TEST_F(CanvasTest, DrawnOutAPictureKeepsItsCorners) {
    canvas_.DrawOut(kFrame, 1, {10, 5, 6, 4});
    const std::uint32_t kExpected[4][6] = {
        {1, 2, 2, 2, 2, 3}, {4, 5, 5, 5, 5, 6}, {4, 5, 5, 5, 5, 6}, {7, 8, 8, 8, 8, 9}};
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x) EXPECT_EQ(At(10 + x, 5 + y), kExpected[y][x]) << x << " " << y;
    }
    EXPECT_EQ(At(16, 5), kWhite);
    EXPECT_EQ(At(10, 9), kWhite);
}

TEST_F(CanvasTest, WhatIsBetweenTheCornersIsPressedTogetherDownToNothing) {
    canvas_.DrawOut({5, 1, {0xFF000001, 0xFF000002, 0xFF000003, 0xFF000004, 0xFF000005}}, 0, {0, 0, 3, 1});
    EXPECT_EQ(At(0, 0), 1u);
    EXPECT_EQ(At(1, 0), 3u);
    EXPECT_EQ(At(2, 0), 5u);
    canvas_.DrawOut(kFrame, 1, {10, 5, 2, 2});
    EXPECT_EQ(At(10, 5), 1u);
    EXPECT_EQ(At(11, 5), 3u);
    EXPECT_EQ(At(10, 6), 7u);
    EXPECT_EQ(At(11, 6), 9u);
}

TEST_F(CanvasTest, ABoxWithoutRoomForTheCornersIsLeftAlone) {
    canvas_.DrawOut(kFrame, 1, {10, 5, 1, 8});
    canvas_.DrawOut(kFrame, 1, {10, 5, 8, 1});
    canvas_.DrawOut({}, 0, {10, 5, 8, 8});
    EXPECT_EQ(pixels_, std::vector<std::uint32_t>(kWidth * kHeight, kWhite));
}

TEST_F(CanvasTest, WhatLiesOutsideIsNotPainted) {
    canvas_.Fill({-100, -100, 400, 400}, Rgb(0x123456));
    canvas_.Fill({200, 200, 10, 10}, Rgb(0x000000));
    canvas_.Fill({-20, -20, 10, 10}, Rgb(0x000000));
    canvas_.DrawOut(kFrame, 1, {38, 28, 30, 30});
    canvas_.DrawOut(kFrame, 1, {-60, -60, 61, 61});
    EXPECT_EQ(At(39, 0), 0x123456u);
    EXPECT_EQ(At(0, 29), 0x123456u);
    EXPECT_EQ(At(0, 0), 9u);
    EXPECT_EQ(At(38, 28), 1u);
    EXPECT_EQ(At(39, 29), 5u);
}

}  // namespace
}  // namespace panel
