// The text fields.
#include "shell/owned.h"
#include "skin/background.h"
#include "skin/offscreen.h"
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

}  // namespace

void DrawSkinText(CSkin& skin, int fieldId, const WCHAR* text) {
    RECT client = {};
    if (!GetClientRect(skin.hWnd, &client) || IsRectEmpty(&client)) return;
    const SkinText* field = FindText(skin, fieldId);
    if (field == nullptr) return;

    const SkinRect& place = PlaceOf(*field);
    const OwnedFont font = FontOf(*field);
    const WindowDC window(skin.hWnd);
    const OffscreenImage image(window.get(), place.cx, place.cy);
    if (!image) return;
    CopyBackground(skin, place, image.dc(), 0, 0);
    SetBkMode(image.dc(), TRANSPARENT);
    SetTextColor(image.dc(), field->crText);
    const SelectObjectGuard selected(image.dc(), font.get());
    RECT whole = {0, 0, place.cx, place.cy};
    DrawTextW(image.dc(), text, -1, &whole, field->uFormat);
    image.CopyTo(window.get(), place.x, place.y);
}
