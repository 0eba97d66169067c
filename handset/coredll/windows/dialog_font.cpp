// A dialog that is open while the display becomes one of twice the pixels, or one of half: its controls get a
// font of that display's, and dialog units count by it.
#include <cwchar>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/coredll/windows/dialog_scale.h"

namespace {

// On the dialog's window: the scale that its font has now, and that font once it is another than it came
// with.
constexpr wchar_t kScale[] = L"KoraHandset.DialogScale";
constexpr wchar_t kFont[] = L"KoraHandset.DialogFont";

int ScaleOf(HWND dialog) {
    return static_cast<int>(reinterpret_cast<INT_PTR>(GetPropW(dialog, kScale)));
}
void SetScale(HWND dialog, int scale) {
    SetPropW(dialog, kScale, reinterpret_cast<HANDLE>(INT_PTR{scale}));
}
HFONT OwnFontOf(HWND dialog) {
    return static_cast<HFONT>(GetPropW(dialog, kFont));
}
HFONT FontOf(HWND window) {
    return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

// As many times as many points: a dialog's font is given in whole ones.
handset::OwnedFont Scaled(HFONT font, int scale, int before) {
    constexpr int kPointsToInch = 72;
    LOGFONTW described = {};
    if (GetObjectW(font, sizeof described, &described) == 0) return nullptr;
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const int dots = GetDeviceCaps(dc.get(), LOGPIXELSY);
    const int points = MulDiv(-described.lfHeight, kPointsToInch, dots) * scale / before;
    described.lfHeight = -MulDiv(points, dots, kPointsToInch);
    described.lfWidth = 0;
    return handset::OwnedFont(CreateFontIndirectW(&described));
}

// Controls that write in another font than the dialog's have it from the program.
void ExchangeFonts(HWND dialog, HFONT before, HFONT font) {
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        if (FontOf(control) == before)
            SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    }
}

// As the host counts them for a dialog that is made with this font.
SIZE BaseUnits(HFONT font) {
    constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const handset::CSelectedObject selected(dc.get(), font);
    TEXTMETRICW metrics = {};
    SIZE letters = {};
    GetTextMetricsW(dc.get(), &metrics);
    GetTextExtentPoint32W(dc.get(), kLetters, static_cast<int>(std::wcslen(kLetters)), &letters);
    return {(letters.cx / 26 + 1) / 2, metrics.tmHeight};
}

}  // namespace

COREDLL_EXPORT void WINAPI HandsetFitDialogFont(HWND dialog) try {
    const int scale = coredll::DisplayScale(), before = ScaleOf(dialog);
    if (before == scale) return;
    SetScale(dialog, scale);
    // One that is being made has the display's font already.
    if (before == 0) return;
    const HFONT own = OwnFontOf(dialog), last = own != nullptr ? own : FontOf(dialog);
    handset::OwnedFont font = Scaled(last, scale, before);
    if (!font) return;
    ExchangeFonts(dialog, last, font.get());
    if (!SetPropW(dialog, kFont, font.get())) return ExchangeFonts(dialog, font.get(), last);
    font.release();
    const handset::OwnedFont gone(own);
} catch (...) {
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT void WINAPI HandsetForgetDialogFont(HWND dialog) try {
    const handset::OwnedFont own(static_cast<HFONT>(RemovePropW(dialog, kFont)));
    RemovePropW(dialog, kScale);
} catch (...) {
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT BOOL WINAPI DeviceMapDialogRect(HWND dialog, RECT* rect) try {
    const coredll::CCallGuard guard;
    const HFONT font = OwnFontOf(dialog);
    if (font == nullptr || rect == nullptr) return MapDialogRect(dialog, rect);
    const SIZE units = BaseUnits(font);
    *rect = {MulDiv(rect->left, units.cx, 4), MulDiv(rect->top, units.cy, 8),
             MulDiv(rect->right, units.cx, 4), MulDiv(rect->bottom, units.cy, 8)};
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
