// The skin's message dispatcher.
#include "skin/skin_window.h"

#include "shell/messages.h"
#include "shell/owned.h"
#include "skin/hit_test.h"
#include "skin/paint_steps.h"
#include "skin/skin_access.h"
#include "skin/skin_rows.h"

namespace {

// Kept: set by the first press and never cleared, so every release from then on lets the capture go, also one
// that somebody else took.
bool g_bCaptureTaken = false;

struct Stylus {
    int x, y;
};

// A captured stylus outside the window has negative coordinates.
Stylus StylusOf(LPARAM lParam) {
    return {static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam))};
}

LRESULT OnPaint(CSkin& skin, WPARAM, LPARAM) {
    const PaintDC paint(skin.hWnd);
    if (skin.pBitmaps != nullptr && skin.pButtons != nullptr && skin.pSliders != nullptr) {
        const BitmapSource source(skin, paint.get());
        PaintBackground(skin, source, paint.get());
        PaintButtons(skin, source, paint.get(), TRUE, kNoElement);
        PaintSliders(skin, source, paint.get(), TRUE, kNoElement);
    }
    return 0;
}

LRESULT OnTimer(CSkin& skin, WPARAM wParam, LPARAM lParam) {
    SendMessageW(skin.hWnd, WM_SKIN_REPEAT, wParam, lParam);
    return 0;
}

int TestButtons(CSkin& skin, UINT message, LPARAM lParam) {
    const Stylus at = StylusOf(lParam);
    int row = 0;
    const int id = HitTestButtons(skin, at.x, at.y, message, &row);
    if (id != kNoHit) RepaintElements(skin, skin.hWnd, FALSE, id, kNoElement);
    return id;
}

int TestSliders(CSkin& skin, UINT message, LPARAM lParam) {
    const Stylus at = StylusOf(lParam);
    int row = 0;
    const int id = HitTestSlider(skin, at.x, at.y, message, &row);
    if (id != kNoHit) RepaintElements(skin, skin.hWnd, FALSE, kNoElement, id);
    return id;
}

void SendSliderMoved(const CSkin& skin, int id) {
    SendMessageW(skin.hWnd, WM_SKIN_SLIDER, static_cast<WPARAM>(id), GetSliderPos(skin, id));
}

LRESULT OnStylusDown(CSkin& skin, WPARAM, LPARAM lParam) {
    SetCapture(skin.hWnd);
    g_bCaptureTaken = true;
    TestSliders(skin, WM_LBUTTONDOWN, lParam);
    TestButtons(skin, WM_LBUTTONDOWN, lParam);
    return 0;
}

LRESULT OnStylusMove(CSkin& skin, WPARAM, LPARAM lParam) {
    const int slider = TestSliders(skin, WM_MOUSEMOVE, lParam);
    // Kept: a move reaches the buttons only while the slider is held, so a button stays pressed when the
    // stylus slides off it, and nothing is pressed by sliding onto it.
    if (slider == kNoHit) return 0;
    SendSliderMoved(skin, slider);
    TestButtons(skin, WM_MOUSEMOVE, lParam);
    return 0;
}

LRESULT OnStylusUp(CSkin& skin, WPARAM, LPARAM lParam) {
    if (g_bCaptureTaken) ReleaseCapture();
    LRESULT result = 0;
    const int slider = TestSliders(skin, WM_LBUTTONUP, lParam);
    if (slider != kNoHit) result = kResultSlider | slider;
    // Kept: also a held button that is let go elsewhere is a hit, so sliding off it does not take the press
    // back.
    const int button = TestButtons(skin, WM_LBUTTONUP, lParam);
    if (button == kNoHit) return result;
    SendMessageW(skin.hWnd, WM_SKIN_CLICK, static_cast<WPARAM>(kResultButton | button), lParam);
    return kResultButton | button;
}

LRESULT OnSetPos(CSkin& skin, WPARAM wParam, LPARAM lParam) {
    const int id = static_cast<int>(wParam);
    if (SetSliderPos(skin, id, static_cast<int>(lParam)) == 0) return 0;
    RepaintElements(skin, skin.hWnd, FALSE, kNoElement, id);
    SendSliderMoved(skin, id);
    return 0;
}

LRESULT OnGetPos(CSkin& skin, WPARAM wParam, LPARAM) {
    return GetSliderPos(skin, static_cast<int>(wParam));
}

struct SkinMessage {
    UINT uMessage;
    LRESULT (*handler)(CSkin& skin, WPARAM wParam, LPARAM lParam);
};

constexpr SkinMessage kMessages[] = {
    {WM_PAINT, OnPaint},          {WM_TIMER, OnTimer},
    {WM_MOUSEMOVE, OnStylusMove}, {WM_LBUTTONDOWN, OnStylusDown},
    {WM_LBUTTONUP, OnStylusUp},   {WM_SKIN_SETPOS, OnSetPos},
    {WM_SKIN_GETPOS, OnGetPos},
};

}  // namespace

LRESULT SkinWindowProc(CSkin& skin, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    skin.hWnd = window;
    for (const SkinMessage& row : kMessages) {
        if (row.uMessage == message) return row.handler(skin, wParam, lParam);
    }
    return 0;
}

void TapButton(CSkin& skin, HWND window, int id) {
    const SkinButton* button = FindButton(skin, id);
    if (button == nullptr || !IsButtonEnabled(skin, id)) return;
    skin.hWnd = window;
    const bool repeats = (button->dwKind & kButtonRepeats) != 0;
    const SkinRect& place = PlaceOf(*button, CurrentScreen()).rect;
    const LPARAM middle =
        MAKELPARAM(static_cast<WORD>(place.x + place.cx / 2), static_cast<WORD>(place.y + place.cy / 2));
    // One that is held still, because the stylus was taken from it, is let go first.
    if (TestButtons(skin, WM_LBUTTONDOWN, middle) != id) TestButtons(skin, WM_LBUTTONDOWN, middle);
    if (repeats) SendMessageW(window, WM_SKIN_REPEAT, static_cast<WPARAM>(id), 0);
    TestButtons(skin, WM_LBUTTONUP, middle);
    SendMessageW(window, WM_SKIN_CLICK, static_cast<WPARAM>(kResultButton | id), middle);
}

void RepaintElements(CSkin& skin, HWND window, BOOL withBackground, int buttonId, int sliderId) {
    const WindowDC dc(window);
    const BitmapSource source(skin, dc.get());
    if (withBackground) PaintBackground(skin, source, dc.get());
    if (buttonId != kNoElement) PaintButtons(skin, source, dc.get(), FALSE, buttonId);
    if (sliderId != kNoElement) PaintSliders(skin, source, dc.get(), FALSE, sliderId);
}
