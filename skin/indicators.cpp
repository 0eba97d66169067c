// The two indicators, whose images are loaded for each paint: progress of a scan, and strength of the signal.
#include <algorithm>
#include <iterator>

#include "resources/resource_ids.h"
#include "shell/owned.h"
#include "skin/bitmap_source.h"
#include "skin/offscreen.h"
#include "skin/shown_texts.h"
#include "skin/skin_load.h"
#include "skin/skin_paint.h"

namespace {

constexpr const WCHAR* kPercent[] = {L"0%",  L"10%", L"20%", L"30%", L"40%", L"50%",
                                     L"60%", L"70%", L"80%", L"90%", L"100%"};
constexpr int kLevels = static_cast<int>(std::size(kPercent));

constexpr SkinRect kProgressPortrait = {40, 113, 159, 14};
constexpr SkinRect kProgressLandscape = {65, 55, 159, 14};

// The signal's image changes every 13 units; the last one has no upper end.
constexpr int kSignalBand = 13;
constexpr int kSignalImages = 6;

}  // namespace

void DrawScanProgress(CSkin& skin, int level) {
    if (level < 0 || level >= kLevels) return;
    DrawSkinText(skin, TEXT_SCAN_PERCENT, kPercent[level]);

    const WindowDC window(skin.hWnd);
    const BitmapSource source(skin, window.get());
    const SkinRect& place = source.Screen().bPortrait ? kProgressPortrait : kProgressLandscape;
    const OffscreenImage image(window.get(), place.cx, place.cy);
    const OwnedBitmap bar = LoadSkinImage(skin.hInstance, static_cast<UINT>(IDB_SCAN_PROGRESS + level));
    if (!image || !bar) return;
    source.CopyBackground(place, image.dc(), 0, 0);
    TransparentImage(image.dc(), 0, 0, place.cx, place.cy, bar.get(), 0, 0, place.cx, place.cy,
                     kTransparentColour);
    image.CopyTo(window.get(), place.x, place.y);
    MarkPaintedOver(skin, source.Screen(), place);
}

void DrawSignal(CSkin& skin, int value) {
    RECT client = {};
    if (!GetClientRect(skin.hWnd, &client) || client.right == 0 || client.bottom == 0) return;
    const int grade = std::clamp(value / kSignalBand, 0, kSignalImages - 1);
    const OwnedBitmap bars = LoadSkinImage(skin.hInstance, static_cast<UINT>(IDB_SIGNAL + grade));
    if (!bars) return;
    const std::uint32_t before = skin.shownSignal.nPaints.load();
    const WindowDC window(skin.hWnd);
    const BitmapSource source(skin, window.get());
    const SkinRect& to = SignalPlace(source.Screen());
    if (source.Screen().bWide) {
        TransparentImage(window.get(), to.x, to.y, to.cx, to.cy, bars.get(), 0, 0, to.cx, to.cy,
                         kTransparentColour);
    } else {
        source.Copy(bars.get(), 0, 0, window.get(), to);
    }
    MarkPaintedOver(skin, source.Screen(), to);
    MarkShown(skin.shownSignal, before, skin.hWnd);
}

bool SignalIsShown(const CSkin& skin) {
    return IsShown(skin.shownSignal, skin.hWnd);
}
