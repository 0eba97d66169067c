// The panel's bitmap and its texts.
#include "handset/phone/panel_picture.h"

#include <cmath>
#include <cwchar>

#include "handset/phone/band_drawing.h"
#include "handset/phone/phone_art.h"
#include "handset/state/display_format.h"

namespace panel {
namespace {

constexpr double kCapHeight = 0.72;  // of the font's size, in common sans-serif faces

handset::OwnedFont MakeFont(const TextMark& mark) {
    LOGFONTW font = {};
    font.lfHeight = -mark.size;
    font.lfWeight = mark.weight;
    font.lfEscapement = mark.turned ? 900 : 0;
    font.lfOrientation = font.lfEscapement;
    font.lfQuality = ANTIALIASED_QUALITY;
    font.lfCharSet = DEFAULT_CHARSET;
    wcscpy(font.lfFaceName, L"Tahoma");
    return handset::OwnedFont(CreateFontIndirectW(&font));
}

}  // namespace

void DrawTextMark(HDC dc, const TextMark& mark) {
    const UINT kAligns[] = {TA_CENTER, TA_LEFT, TA_RIGHT};
    const handset::OwnedFont font = MakeFont(mark);
    const handset::CSelectedObject selected(dc, font.get());
    SetTextAlign(dc, TA_BASELINE | kAligns[static_cast<int>(mark.anchor)]);
    SetTextCharacterExtra(dc, mark.spacing);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(mark.paint.red, mark.paint.green, mark.paint.blue));
    const int drop = static_cast<int>(std::lround(mark.size * kCapHeight / 2));
    const int x = mark.turned ? mark.x + drop : mark.x;
    const int y = mark.turned ? mark.y : mark.y + drop;
    TextOutW(dc, x, y, mark.text, static_cast<int>(std::wcslen(mark.text)));
}

int TextWidth(HDC dc, const TextMark& mark) {
    const handset::OwnedFont font = MakeFont(mark);
    const handset::CSelectedObject selected(dc, font.get());
    SIZE size = {};
    GetTextExtentPoint32W(dc, mark.text, static_cast<int>(std::wcslen(mark.text)), &size);
    return size.cx;
}

bool CPanelPicture::Fit(int width, int height) {
    if (bitmap_ && width == width_ && height == height_) return true;
    const BITMAPINFO info = handset::DisplayFormat(width, height);
    dc_.reset();  // a bitmap that is still selected cannot be deleted
    void* bits = nullptr;
    bitmap_.reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    dc_.reset(CreateCompatibleDC(nullptr));
    pixels_ = static_cast<std::uint32_t*>(bits);
    width_ = width;
    height_ = height;
    if (!bitmap_ || !dc_) return false;
    SelectObject(dc_.get(), bitmap_.get());
    return true;
}

void CPanelPicture::Make(const PanelView& view) {
    if (!Fit(view.phone.width, view.phone.height)) return;
    GdiFlush();
    CCanvas canvas(pixels_, width_, height_);
    DrawArt(canvas, Art::kDesk, {0, 0, width_, height_});
    DrawPhoneShapes(canvas, view);
    DrawColumnShapes(canvas, view);
    DrawBandShapes(canvas, view.phone.band, view.band);
    DrawPhoneTexts(dc_.get(), view);
    DrawColumnTexts(dc_.get(), view);
    DrawBandTexts(dc_.get(), view.phone.band, view.band);
}

void CPanelPicture::Show(HDC dc, const RECT& part) const {
    if (!dc_) return;
    BitBlt(dc, part.left, part.top, part.right - part.left, part.bottom - part.top, dc_.get(), part.left,
           part.top, SRCCOPY);
}

}  // namespace panel
