#include "tests/bench/bare_painting.h"

namespace {

constexpr COLORREF kMagenta = 0xFF00FF;

struct Place {
    int x, y, cx, cy;
};

void Copy(HDC to, HDC from, const Place& place, int x, int y) {
    BitBlt(to, place.x, place.y, place.cx, place.cy, from, x, y, SRCCOPY);
}

void Erase(HDC to, HDC background, const Place& place) {
    Copy(to, background, place, place.x, place.y);
}

}  // namespace

void PaintBareScreen(HDC dc, const BarePictures& pictures) {
    const HDC memory = CreateCompatibleDC(dc);
    const HGDIOBJ original = SelectObject(memory, pictures.hBackground);
    Erase(dc, memory, {0, 0, 240, 320});
    SelectObject(memory, pictures.hMute);
    Copy(dc, memory, {16, 213, 17, 18}, 0, 0);
    SelectObject(memory, pictures.hRecord);
    Copy(dc, memory, {11, 236, 34, 30}, 0, 0);
    SelectObject(memory, pictures.hBackground);
    Erase(dc, memory, {82, 236, 37, 30});
    Erase(dc, memory, {120, 236, 37, 30});
    Erase(dc, memory, {45, 236, 37, 30});
    Erase(dc, memory, {158, 236, 37, 30});
    SelectObject(memory, pictures.hOutput);
    Copy(dc, memory, {195, 236, 33, 30}, 0, 0);
    SelectObject(memory, pictures.hBackground);
    Erase(dc, memory, {158, 216, 29, 15});
    Erase(dc, memory, {187, 216, 32, 15});
    Erase(dc, memory, {35, 215, 80, 13});
    TransparentImage(dc, 35 + 13, 215, 18, 13, pictures.hThumb, 0, 0, 18, 13, kMagenta);
    SelectObject(memory, original);
    DeleteDC(memory);
}

void PaintBareFrequency(HWND window, HBITMAP background, const WCHAR* text) {
    constexpr Place kPlace = {123, 30, 117, 35};
    LOGFONTW shape = {};
    GetObjectW(GetStockObject(SYSTEM_FONT), sizeof(shape), &shape);
    shape.lfWidth = shape.lfHeight = 0;
    shape.lfWeight = 700;
    const HFONT font = CreateFontIndirectW(&shape);
    const HDC dc = GetDC(window);
    const HDC source = CreateCompatibleDC(dc);
    const HDC memory = CreateCompatibleDC(dc);
    const HBITMAP picture = CreateCompatibleBitmap(dc, kPlace.cx, kPlace.cy);
    const HGDIOBJ noPicture = SelectObject(memory, picture);
    const HGDIOBJ noSource = SelectObject(source, background);
    BitBlt(memory, 0, 0, kPlace.cx, kPlace.cy, source, kPlace.x, kPlace.y, SRCCOPY);
    SetBkMode(memory, TRANSPARENT);
    SetTextColor(memory, 0xFFFFFF);
    const HGDIOBJ noFont = SelectObject(memory, font);
    RECT whole = {0, 0, kPlace.cx, kPlace.cy};
    DrawTextW(memory, text, -1, &whole, DT_LEFT);
    Copy(dc, memory, kPlace, 0, 0);
    SelectObject(memory, noFont);
    SelectObject(memory, noPicture);
    DeleteObject(picture);
    DeleteDC(memory);
    SelectObject(source, noSource);
    DeleteDC(source);
    ReleaseDC(window, dc);
    DeleteObject(font);
}

void PaintBareSeekUp(HWND window, HBITMAP background) {
    const HDC dc = GetDC(window);
    const HDC memory = CreateCompatibleDC(dc);
    const HGDIOBJ original = SelectObject(memory, background);
    Erase(dc, memory, {120, 236, 37, 30});
    SelectObject(memory, original);
    DeleteDC(memory);
    ReleaseDC(window, dc);
}
