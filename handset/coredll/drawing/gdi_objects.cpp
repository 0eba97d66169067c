// Drawing objects: each one made, and each one given back, is counted.
#include <exception>
#include <mutex>
#include <unordered_set>

#include "handset/base/module_edge.h"
#include "handset/coredll/drawing/gdi_count.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/state/display_format.h"

namespace {

using coredll::CallKind;
using coredll::CCallGuard;

std::mutex g_lock;  // guards LiveObjects
std::unordered_set<HANDLE>& LiveObjects() {
    static auto* const objects = new std::unordered_set<HANDLE>;
    return *objects;
}

// On the device a paint is on the screen at once. Wine keeps it until a message loop of the program turns,
// which the window's own thread does; what another thread paints would wait for the next message that comes
// to the window. A look for messages takes everything to the screen.
void ShowWhatAWorkerPainted(HWND window) {
    if (window == nullptr || GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) return;
    const CCallGuard guard(CallKind::CallsBack);
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_NOYIELD);
}

}  // namespace

// Exported, so that another program can read it without a thread of its own in this one.
extern "C" {
__attribute__((used)) volatile DWORD HandsetGdiObjects = 0;
}

namespace coredll {

HANDLE GdiMade(HANDLE object) {
    if (object == nullptr) return object;
    try {
        const std::lock_guard<std::mutex> lock(g_lock);
        LiveObjects().insert(object);
        HandsetGdiObjects = static_cast<DWORD>(LiveObjects().size());
    } catch (const std::exception&) {
        // There is no memory to count it: it is made all the same, and missing from the count.
    }
    return object;
}

void GdiGone(HANDLE object) {
    const std::lock_guard<std::mutex> lock(g_lock);
    LiveObjects().erase(object);
    HandsetGdiObjects = static_cast<DWORD>(LiveObjects().size());
}

}  // namespace coredll

COREDLL_EXPORT DWORD WINAPI HandsetGdiObjectCount(void) {
    return HandsetGdiObjects;
}

COREDLL_EXPORT void WINAPI HandsetGdiObjectMade(HANDLE object) try { coredll::GdiMade(object); } catch (...) {
    handset::EdgeAnswer<void>();
}

// A call that makes an object.
#define MAKES(result, name, parameters, arguments)             \
    COREDLL_EXPORT result WINAPI Device##name parameters try { \
        const CCallGuard guard;                                \
        return coredll::Made(name arguments);                  \
    } catch (...) {                                            \
        return handset::EdgeAnswer<result>();                  \
    }

// clang-format off
MAKES(HBITMAP, CreateBitmap, (int width, int height, UINT planes, UINT bits, const void* data), (width, height, planes, bits, data))
MAKES(HBITMAP, CreateDIBSection, (HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD offset), (dc, info, usage, bits, section, offset))
MAKES(HBITMAP, LoadBitmapW, (HINSTANCE module, const wchar_t* name), (module, name))
MAKES(HBRUSH, CreateDIBPatternBrushPt, (const void* packed, UINT usage), (packed, usage))
MAKES(HBRUSH, CreatePatternBrush, (HBITMAP bitmap), (bitmap))
MAKES(HBRUSH, CreateSolidBrush, (COLORREF colour), (colour))
MAKES(HDC, CreateCompatibleDC, (HDC dc), (dc))
MAKES(HDC, CreateDCW, (const wchar_t* driver, const wchar_t* device, const wchar_t* port, const DEVMODEW* mode), (driver, device, port, mode))
MAKES(HDC, GetDC, (HWND window), (window))
MAKES(HDC, GetDCEx, (HWND window, HRGN clip, DWORD flags), (window, clip, flags))
MAKES(HDC, GetWindowDC, (HWND window), (window))
MAKES(HPALETTE, CreatePalette, (const LOGPALETTE* palette), (palette))
MAKES(HPEN, CreatePen, (int style, int width, COLORREF colour), (style, width, colour))
MAKES(HPEN, CreatePenIndirect, (const LOGPEN* pen), (pen))
MAKES(HRGN, CreateRectRgn, (int left, int top, int right, int bottom), (left, top, right, bottom))
MAKES(HRGN, CreateRectRgnIndirect, (const RECT* rect), (rect))
MAKES(HRGN, ExtCreateRegion, (const XFORM* transform, DWORD size, const RGNDATA* data), (transform, size, data))
// clang-format on

// For a window: the display's 32 bits a pixel, in memory of the bitmap's own. Wine asks its server for the
// display's format again at every use of any other bitmap, which takes longer than the drawing.
COREDLL_EXPORT HBITMAP WINAPI DeviceCreateCompatibleBitmap(HDC dc, int width, int height) try {
    const CCallGuard guard;
    if (GetObjectType(dc) != OBJ_DC || width <= 0 || height <= 0) {
        return coredll::Made(CreateCompatibleBitmap(dc, width, height));
    }
    const BITMAPINFO info = handset::DisplayFormat(width, height);
    void* bits = nullptr;
    return coredll::Made(CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
} catch (...) {
    return handset::EdgeAnswer<HBITMAP>();
}

COREDLL_EXPORT HANDLE WINAPI DeviceLoadImageW(HINSTANCE module, const wchar_t* name, UINT type, int width,
                                              int height, UINT flags) try {
    const CCallGuard guard;
    const HANDLE image = LoadImageW(module, name, type, width, height, flags);
    return type == IMAGE_BITMAP ? coredll::GdiMade(image) : image;
} catch (...) {
    return handset::EdgeAnswer<HANDLE>();
}

COREDLL_EXPORT HDC WINAPI DeviceBeginPaint(HWND window, PAINTSTRUCT* paint) try {
    const CCallGuard guard(CallKind::CallsBack);
    return coredll::Made(BeginPaint(window, paint));
} catch (...) {
    return handset::EdgeAnswer<HDC>();
}

COREDLL_EXPORT BOOL WINAPI DeviceEndPaint(HWND window, const PAINTSTRUCT* paint) try {
    const CCallGuard guard;
    if (paint != nullptr) coredll::GdiGone(paint->hdc);
    return EndPaint(window, paint);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

// Forgotten before it is deleted: another thread may be given the same handle at once.
COREDLL_EXPORT BOOL WINAPI DeviceDeleteObject(HGDIOBJ object) try {
    const CCallGuard guard;
    coredll::GdiGone(object);
    return DeleteObject(object);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI DeviceDeleteDC(HDC dc) try {
    const CCallGuard guard;
    coredll::GdiGone(dc);
    return DeleteDC(dc);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT int WINAPI DeviceReleaseDC(HWND window, HDC dc) try {
    int released = 0;
    {
        const CCallGuard guard;
        coredll::GdiGone(dc);
        released = ReleaseDC(window, dc);
    }
    ShowWhatAWorkerPainted(window);
    return released;
} catch (...) {
    return handset::EdgeAnswer<int>();
}
