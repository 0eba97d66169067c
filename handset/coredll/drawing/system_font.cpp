#include "handset/coredll/drawing/system_font.h"

#include <algorithm>
#include <cstring>

#include "handset/base/owned.h"
#include "handset/coredll/drawing/gdi_count.h"
#include "handset/coredll/kernel/call_guard.h"

namespace {

constexpr int kFontHeight = 12;  // pixels, without the space between the rows
// Of what is heavier the host takes the bold face.
constexpr LONG kHeaviestPlain = 550;

// The host's stock font is a bitmap of one size, or whatever stands in for it.
bool IsSystemFont(HANDLE object) {
    return object != nullptr && object == GetStockObject(SYSTEM_FONT);
}

// A bold letter that is squeezed further has no room left between its strokes: an R looks like an 8, a D like
// a 0 and an S like a 5.
LONG LeastWidth(LOGFONTW font) {
    if (font.lfWeight <= kHeaviestPlain) return 0;
    font.lfWidth = 0;
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const handset::OwnedFont made(CreateFontIndirectW(&font));
    const handset::CSelectedObject selected(dc.get(), made.get());
    TEXTMETRICW metrics = {};
    GetTextMetricsW(dc.get(), &metrics);
    return metrics.tmAveCharWidth * 7 / 8;
}

}  // namespace

namespace coredll {

LOGFONTW SystemFontOfDevice() {
    LOGFONTW font = {};
    font.lfHeight = -kFontHeight;
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    lstrcpynW(font.lfFaceName, L"Tahoma", LF_FACESIZE);
    return font;
}

void GiveSystemFont(HWND control) {
    // Of all controls, and for the whole run.
    static const HFONT font = [] {
        const LOGFONTW described = SystemFontOfDevice();
        return CreateFontIndirectW(&described);
    }();
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

}  // namespace coredll

COREDLL_EXPORT int WINAPI DeviceGetObjectW(HANDLE object, int size, void* data) try {
    const coredll::CCallGuard guard;
    if (!IsSystemFont(object) || data == nullptr || size < static_cast<int>(sizeof(LOGFONTW))) {
        return GetObjectW(object, size, data);
    }
    const LOGFONTW font = coredll::SystemFontOfDevice();
    std::memcpy(data, &font, sizeof font);
    return static_cast<int>(sizeof font);
} catch (...) {
    return handset::EdgeAnswer<int>();
}

// Where neither height nor width is given, it is as high as the system's. One of another width than its own
// has no letters made for its size: smooth edges serve it where the host's font allows them.
COREDLL_EXPORT HFONT WINAPI DeviceCreateFontIndirectW(const LOGFONTW* font) try {
    const coredll::CCallGuard guard;
    if (font == nullptr) return coredll::Made(CreateFontIndirectW(font));
    LOGFONTW sized = *font;
    if (sized.lfHeight == 0 && sized.lfWidth == 0) sized.lfHeight = -kFontHeight;
    if (sized.lfWidth != 0 && sized.lfQuality == DEFAULT_QUALITY) sized.lfQuality = ANTIALIASED_QUALITY;
    if (sized.lfWidth > 0) sized.lfWidth = std::max(sized.lfWidth, LeastWidth(sized));
    return coredll::Made(CreateFontIndirectW(&sized));
} catch (...) {
    return handset::EdgeAnswer<HFONT>();
}
