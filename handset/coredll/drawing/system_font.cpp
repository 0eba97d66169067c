#include "handset/coredll/drawing/system_font.h"

#include <cstring>

#include "handset/coredll/drawing/gdi_count.h"
#include "handset/coredll/kernel/call_guard.h"

namespace {

constexpr int kFontHeight = 12;  // pixels, without the space between the rows

// The host's stock font is a bitmap of one size, or whatever stands in for it.
bool IsSystemFont(HANDLE object) {
    return object != nullptr && object == GetStockObject(SYSTEM_FONT);
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

// Where neither height nor width is given, it is as high as the system's. A font of another width than its
// own has no letters made for its size: smooth edges keep an R from looking like an 8.
COREDLL_EXPORT HFONT WINAPI DeviceCreateFontIndirectW(const LOGFONTW* font) try {
    const coredll::CCallGuard guard;
    if (font == nullptr) return coredll::Made(CreateFontIndirectW(font));
    LOGFONTW sized = *font;
    if (sized.lfHeight == 0 && sized.lfWidth == 0) sized.lfHeight = -kFontHeight;
    if (sized.lfWidth != 0 && sized.lfQuality == DEFAULT_QUALITY) sized.lfQuality = ANTIALIASED_QUALITY;
    return coredll::Made(CreateFontIndirectW(&sized));
} catch (...) {
    return handset::EdgeAnswer<HFONT>();
}
