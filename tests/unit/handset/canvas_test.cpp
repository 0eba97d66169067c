// The panel's painter.
#include "handset/phone/canvas.h"

#include <gtest/gtest.h>

#include <vector>

namespace panel {
namespace {

class CanvasTest : public testing::Test {
  protected:
    static constexpr int kWidth = 40, kHeight = 30;
    [[nodiscard]] std::uint32_t At(int x, int y) const {
        return pixels_[static_cast<std::size_t>(y * kWidth + x)];
    }

    std::vector<std::uint32_t> pixels_ = std::vector<std::uint32_t>(kWidth * kHeight, 0x00FFFFFF);
    CCanvas canvas_{pixels_.data(), kWidth, kHeight};
};

TEST_F(CanvasTest, ARectangleCoversItsPixelsAndNoOthers) {
    canvas_.Fill({10, 5, 20, 10, 0}, Rgb(0x102030));
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const bool inside = x >= 10 && x < 30 && y >= 5 && y < 15;
            EXPECT_EQ(At(x, y), inside ? 0x102030u : 0xFFFFFFu) << x << " " << y;
        }
    }
}

TEST_F(CanvasTest, RoundCornersAreLeftOutAndTheirEdgesAreSoft) {
    canvas_.Fill({10, 5, 20, 20, 10}, Rgb(0x000000));
    EXPECT_EQ(At(10, 5), 0xFFFFFFu);
    EXPECT_EQ(At(20, 15), 0x000000u);
    bool soft = false;
    for (int x = 10; x < 20; ++x) soft = soft || (At(x, 8) != 0 && At(x, 8) != 0xFFFFFFu);
    EXPECT_TRUE(soft);
}

TEST_F(CanvasTest, AShadeRunsFromTopToBottom) {
    canvas_.Fill({0, 0, 40, 30, 0}, Rgb(0x000000), Rgb(0xF0F0F0));
    EXPECT_LT(At(5, 0) & 0xFF, 0x10u);
    EXPECT_GT(At(5, 29) & 0xFF, 0xE0u);
    for (int y = 1; y < kHeight; ++y) EXPECT_GE(At(5, y) & 0xFF, At(5, y - 1) & 0xFF);
}

TEST_F(CanvasTest, AlphaMixesWithWhatIsBelow) {
    canvas_.Fill({0, 0, 40, 30, 0}, Rgb(0x000000, 0.5));
    EXPECT_EQ(At(3, 3), 0x808080u);
}

TEST_F(CanvasTest, WhatLiesOutsideIsNotPainted) {
    canvas_.Fill({-100, -100, 400, 400, 0}, Rgb(0x123456));
    canvas_.Stroke({-20, -20}, {100, 100}, 5, Rgb(0x000000));
    canvas_.Triangle({-5, -5}, {60, 10}, {10, 60}, Rgb(0x000000));
    canvas_.Shadow({35, 25, 50, 50, 5}, 20, Rgb(0x000000));
    canvas_.Fill({200, 200, 10, 10, 0}, Rgb(0x000000));
    EXPECT_EQ(At(39, 0), 0x123456u);
}

TEST_F(CanvasTest, ATriangleIsFilledInEitherOrderOfItsCorners) {
    canvas_.Triangle({5, 5}, {25, 5}, {5, 25}, Rgb(0x000000));
    EXPECT_EQ(At(8, 8), 0x000000u);
    EXPECT_EQ(At(24, 24), 0xFFFFFFu);
    canvas_.Fill({0, 0, 40, 30, 0}, Rgb(0xFFFFFF));
    canvas_.Triangle({5, 5}, {5, 25}, {25, 5}, Rgb(0x000000));
    EXPECT_EQ(At(8, 8), 0x000000u);
    EXPECT_EQ(At(24, 24), 0xFFFFFFu);
}

TEST_F(CanvasTest, AnOutlineLeavesTheInsideAlone) {
    canvas_.Outline({5, 5, 20, 20, 4}, 2, Rgb(0x000000), Rgb(0x000000));
    EXPECT_EQ(At(15, 15), 0xFFFFFFu);
    EXPECT_EQ(At(15, 5), 0x000000u);
    EXPECT_EQ(At(5, 15), 0x000000u);
}

}  // namespace
}  // namespace panel
