#include "skin/shown_texts.h"

#include <cwchar>

#include "skin/skin_rows.h"

namespace {

constexpr SkinRect kSignalWide = {14, 12, 49, 22};
constexpr SkinRect kSignalNarrow = {5, 10, 24, 11};

bool Overlap(const SkinRect& a, const SkinRect& b) {
    return a.x < b.x + b.cx && b.x < a.x + a.cx && a.y < b.y + b.cy && b.y < a.y + a.cy;
}

void MarkRows(CSkin& skin, const SkinScreen& screen, int first, const SkinRect& rect) {
    if (skin.pTexts == nullptr) return;
    for (int row = first; row < skin.nTexts && row < kMostShownTexts; ++row) {
        if (Overlap(PlaceOf(skin.pTexts[row], screen), rect)) ++skin.shownTexts[row].nPaints;
    }
}

}  // namespace

const SkinRect& SignalPlace(const SkinScreen& screen) {
    return screen.bWide ? kSignalWide : kSignalNarrow;
}

void MarkPaintedOver(CSkin& skin, const SkinScreen& screen, const SkinRect& rect) {
    MarkRows(skin, screen, 0, rect);
    if (Overlap(SignalPlace(screen), rect)) ++skin.shownSignal.nPaints;
}

void MarkFieldShown(CSkin& skin, const SkinScreen& screen, const SkinText& field) {
    MarkRows(skin, screen, static_cast<int>(&field - skin.pTexts), PlaceOf(field, screen));
}

void MarkShown(SkinShown& shown, std::uint32_t before, HWND window) {
    shown.bKnown = true;
    shown.nShownAt = before + 1;
    shown.hWnd = window;
}

bool IsShown(const SkinShown& shown, HWND window) {
    return shown.bKnown && shown.nShownAt == shown.nPaints.load() && shown.hWnd == window;
}

bool ShowsText(const SkinShownText& shown, HWND window, const WCHAR* text) {
    return IsShown(shown, window) && std::wcscmp(shown.szText, text) == 0;
}
