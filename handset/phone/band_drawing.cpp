// Bars, marks and figures.
#include "handset/phone/band_drawing.h"

#include <algorithm>
#include <cmath>

#include "handset/base/owned.h"
#include "handset/phone/panel_picture.h"
#include "handset/phone/phone_art.h"
#include "handset/phone/png_file.h"
#include "handset/state/display_format.h"

namespace panel {
namespace {

constexpr Paint kTuned = Rgb(0xFFB52E);
constexpr Paint kNeedle = Rgb(0xFFB52E, 0.55);
constexpr Paint kUnseen = Rgb(0x3A3D44);
constexpr Paint kMark = Rgb(0x9CA2AA);
constexpr Paint kFigures = Rgb(0xF1F1ED);
constexpr int kMarksBelow = 7;
constexpr int kSignHeight = 6;
constexpr int kFiguresBelow = 20;
constexpr int kLeastFigures = 8;
// As in the panel of a phone that is upright.
constexpr int kPictureWidth = 498, kPictureMargin = 14;

std::uint32_t ChannelOf(std::size_t place) {
    return handset::kFirstBandChannel_10kHz + static_cast<std::uint32_t>(place) * handset::kBandStep_10kHz;
}

}  // namespace

void DrawBandShapes(CCanvas& canvas, const Box& strip, const BandShown& shown) {
    DrawArt(canvas, Art::kBand, strip);
    const Box bars = BandBars(strip);
    const double pitch = static_cast<double>(bars.w) / static_cast<double>(shown.levels.size());
    for (std::size_t i = 0; i < shown.levels.size(); ++i) {
        const std::uint32_t channel = ChannelOf(i);
        const bool seen = shown.levels[i] != handset::kLevelNotSeen;
        const double height =
            seen ? std::max(1.0, bars.h * std::min<int>(shown.levels[i], 100) / 100.0) : 1.0;
        // A little wider than a channel is, so that a lonely station is seen.
        const double width = std::max(pitch, 2.0);
        const Paint paint = !seen ? kUnseen : channel == shown.tuned_10kHz ? kTuned : kAccent;
        canvas.Fill({BandPlace(strip, channel) - width / 2, bars.Bottom() - height, width, height}, paint);
    }
    if (shown.tuned_10kHz == 0) return;
    const double x = BandPlace(strip, shown.tuned_10kHz);
    canvas.Fill({x - 0.5, static_cast<double>(bars.y), 1, static_cast<double>(bars.h)}, kNeedle);
    DrawArt(canvas, Art::kTuned, {static_cast<int>(std::lround(x)), bars.Bottom() + 1, 0, kSignHeight});
}

void DrawBandTexts(HDC dc, const Box& strip, const BandShown& shown) {
    const Box bars = BandBars(strip);
    for (std::uint32_t megahertz = 88; megahertz <= 108; megahertz += 4) {
        const std::uint32_t channel = 100 * megahertz;
        const double away = std::abs(BandPlace(strip, channel) - BandPlace(strip, shown.tuned_10kHz));
        // The sign of the tuned channel stands there.
        if (shown.tuned_10kHz != 0 && away < 12) continue;
        const bool last = megahertz == 108;
        const int x = last ? bars.Right() : static_cast<int>(std::lround(BandPlace(strip, channel)));
        DrawTextMark(dc, {x, bars.Bottom() + kMarksBelow, std::to_wstring(megahertz).c_str(), 9, FW_NORMAL,
                          kMark, last ? TextAnchor::kRight : TextAnchor::kMiddle});
    }
    const int y = bars.Bottom() + kFiguresBelow;
    TextMark words = {bars.x, y, shown.words.c_str(), 11, FW_NORMAL, kFigures, TextAnchor::kLeft};
    // With all that may be known of a station the words are too long at that size.
    while (words.size > kLeastFigures && TextWidth(dc, words) > bars.w) --words.size;
    DrawTextMark(dc, words);
}

std::string BandPng(const BandShown& shown) {
    const int width = kPictureWidth, height = kBandHeight + 2 * kPictureMargin;
    const BITMAPINFO info = handset::DisplayFormat(width, height);
    void* bits = nullptr;
    const handset::OwnedBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    if (!bitmap || !dc) return "";
    const handset::CSelectedObject selected(dc.get(), bitmap.get());
    auto* pixels = static_cast<std::uint32_t*>(bits);
    const Box strip = {kPictureMargin, kPictureMargin, width - 2 * kPictureMargin, kBandHeight};
    CCanvas canvas(pixels, width, height);
    DrawArt(canvas, Art::kDesk, {0, 0, width, height});
    DrawBandShapes(canvas, strip, shown);
    DrawBandTexts(dc.get(), strip, shown);
    GdiFlush();
    return PngOf(pixels, width, height);
}

}  // namespace panel
