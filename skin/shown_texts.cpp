#include "skin/shown_texts.h"

#include "skin/skin_rows.h"

namespace {

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

void MarkPaintedOver(CSkin& skin, const SkinScreen& screen, const SkinRect& rect) {
    MarkRows(skin, screen, 0, rect);
}

void MarkFieldShown(CSkin& skin, const SkinScreen& screen, const SkinText& field) {
    MarkRows(skin, screen, static_cast<int>(&field - skin.pTexts), PlaceOf(field, screen));
}

bool ShowsText(const SkinShownText& shown, HWND window, const WCHAR* text) {
    return shown.bKnown && shown.nShownAt == shown.nPaints.load() && shown.hWnd == window &&
           shown.text == text;
}
