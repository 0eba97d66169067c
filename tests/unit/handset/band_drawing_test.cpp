// The strip of the band as it is drawn.
#include "handset/phone/band_drawing.h"

#include <gtest/gtest.h>

#include "handset/base/owned.h"
#include "handset/state/display_format.h"

namespace panel {
namespace {

constexpr int kWidth = 600;
constexpr Box kStrip = {14, 0, 470, kBandHeight};

// The last column in which the words of a strip have left anything; -1: none.
int LastColumn(const wchar_t* words) {
    const BITMAPINFO info = handset::DisplayFormat(kWidth, kBandHeight);
    void* bits = nullptr;
    const handset::OwnedBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const handset::CSelectedObject selected(dc.get(), bitmap.get());
    BandShown shown;
    shown.words = words;
    DrawBandTexts(dc.get(), kStrip, shown);
    GdiFlush();
    const auto* pixels = static_cast<const std::uint32_t*>(bits);
    for (int x = kWidth - 1; x >= 0; --x) {
        for (int y = 0; y < kBandHeight; ++y) {
            if ((pixels[y * kWidth + x] & 0xFFFFFF) != 0) return x;
        }
    }
    return -1;
}

TEST(BandDrawing, AllThatMayBeKnownOfAStationStandsWithinTheStrip) {
    const wchar_t* const longest =
        L"107.9 MHz   level 100   C/N0 148.1 dB-Hz   stereo   -44000 Hz   100 % lost   PI D301   TP   TA";
    EXPECT_LE(LastColumn(longest), kStrip.Right());
    // Beyond the marks below the bars, which end there too.
    EXPECT_GT(LastColumn(longest), 300);
}

}  // namespace
}  // namespace panel
