// The picture of the whole panel, kept ready for WM_PAINT and made again when something changed.
#pragma once

#include <windows.h>

#include <optional>

#include "handset/base/owned.h"
#include "handset/phone/band_strip.h"
#include "handset/phone/canvas.h"
#include "handset/phone/phone_layout.h"
#include "handset/phone/switch_column.h"

namespace panel {

// Everything that the picture depends on.
struct PanelView {
    PhoneLayout phone;
    ColumnLayout column;
    Snapshot now;
    BandShown band;
    std::optional<PhoneKey> pressedKey;
    const SwitchRow* pressedSwitch;
    std::optional<std::size_t> focus;  // a place of panel_focus.h, while the keys are for the switches
};

class CPanelPicture {
  public:
    // Paints the view; the bitmap has the client area's size.
    void Make(const PanelView& view);
    void Show(HDC dc, const RECT& part) const;

  private:
    bool Fit(int width, int height);

    handset::OwnedMemoryDC dc_;
    handset::OwnedBitmap bitmap_;
    std::uint32_t* pixels_ = nullptr;
    int width_ = 0, height_ = 0;
};

// What the parts are drawn with.
inline constexpr Paint kAccent = Rgb(0x8DC21F);

// The parts, first shapes and then texts, because the system writes texts over finished pixels.
void DrawPhoneShapes(CCanvas& canvas, const PanelView& view);
void DrawPhoneTexts(HDC dc, const PanelView& view);
void DrawColumnShapes(CCanvas& canvas, const PanelView& view);
void DrawColumnTexts(HDC dc, const PanelView& view);

// A text around a middle (or from a left edge), optionally turned a quarter to the left.
enum class TextAnchor { kMiddle, kLeft, kRight };
struct TextMark {
    int x, y;  // the anchor, at half the height of a capital letter
    const wchar_t* text;
    int size;  // pixels
    int weight;
    Paint paint;
    TextAnchor anchor = TextAnchor::kMiddle;
    bool turned = false;
    int spacing = 0;  // extra pixels between letters
};
void DrawTextMark(HDC dc, const TextMark& mark);
int TextWidth(HDC dc, const TextMark& mark);

}  // namespace panel
