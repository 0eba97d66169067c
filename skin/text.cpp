// The text fields.
#include <strsafe.h>

#include "shell/owned.h"
#include "skin/bitmap_source.h"
#include "skin/offscreen.h"
#include "skin/shown_texts.h"
#include "skin/skin_paint.h"
#include "skin/skin_rows.h"

namespace {

OwnedFont FontOf(const SkinText& field) {
    LOGFONTW font = {};
    GetObjectW(GetStockObject(SYSTEM_FONT), sizeof(font), &font);
    font.lfWidth = field.lfWidth;
    font.lfHeight = field.lfHeight;
    font.lfWeight = field.lfWeight;
    return OwnedFont(CreateFontIndirectW(&font));
}

using Mark = void (*)(CSkin& skin, const SkinScreen& screen, const SkinText& field);

// `mark` notes the paint once it is done. False when nothing was painted.
bool PaintField(CSkin& skin, const SkinText& field, const WCHAR* text, Mark mark) {
    RECT client = {};
    if (!GetClientRect(skin.hWnd, &client) || IsRectEmpty(&client)) return false;

    const OwnedFont font = FontOf(field);
    const WindowDC window(skin.hWnd);
    const BitmapSource source(skin, window.get());
    const SkinRect& place = PlaceOf(field, source.Screen());
    const OffscreenImage image(window.get(), place.cx, place.cy);
    if (!image) return false;
    source.CopyBackground(place, image.dc(), 0, 0);
    SetBkMode(image.dc(), TRANSPARENT);
    SetTextColor(image.dc(), field.crText);
    const SelectObjectGuard selected(image.dc(), font.get());
    RECT whole = {0, 0, place.cx, place.cy};
    // A station's "&" is a letter, not the mark of a key.
    DrawTextW(image.dc(), text, -1, &whole, field.uFormat | DT_NOPREFIX);
    image.CopyTo(window.get(), place.x, place.y);
    mark(skin, source.Screen(), field);
    return true;
}

void MarkDrawn(CSkin& skin, const SkinScreen& screen, const SkinText& field) {
    MarkPaintedOver(skin, screen, PlaceOf(field, screen));
}

}  // namespace

void DrawSkinText(CSkin& skin, int fieldId, const WCHAR* text) {
    const SkinText* field = FindText(skin, fieldId);
    if (field != nullptr) PaintField(skin, *field, text, MarkDrawn);
}

void ShowSkinText(CSkin& skin, int fieldId, const WCHAR* text) {
    const SkinText* field = FindText(skin, fieldId);
    if (field == nullptr || field - skin.pTexts >= kMostShownTexts) return;
    SkinShownText& shown = skin.shownTexts[field - skin.pTexts];
    if (ShowsText(shown, skin.hWnd, text)) return;
    const std::uint32_t before = shown.nPaints.load();
    if (!PaintField(skin, *field, text, MarkFieldShown)) return;
    MarkShown(shown, before, skin.hWnd);
    // One that is too long to be kept is painted anew each time.
    if (FAILED(StringCchCopyW(shown.szText, kShownTextCapacity, text))) shown.bKnown = false;
}
