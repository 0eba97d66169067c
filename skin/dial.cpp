// The dial of a wide screen, beside the face: its circle and its marks are part of the background.
#include <algorithm>
#include <cmath>

#include "shell/owned.h"
#include "skin/bitmap_source.h"
#include "skin/offscreen.h"
#include "skin/skin_paint.h"

namespace {

// A quarter of a circle about a corner of the background.
struct Dial {
    int xMiddle, yMiddle, radius;
    SkinRect box;   // of what is painted
    SkinRect face;  // stays as it is
};
constexpr Dial kPortraitDial = {480, 536, 300, {164, 220, 316, 316}, {0, 0, 241, 321}};
constexpr Dial kLandscapeDial = {640, 376, 330, {294, 30, 346, 346}, {0, 0, 321, 241}};

constexpr std::uint32_t kLowest_10kHz = 8750, kHighest_10kHz = 10800;
constexpr double kFirst_deg = 4, kPerChannel_deg = 0.04;

constexpr int kLowestNumber_MHz = 88, kHighestNumber_MHz = 108, kNumberStep_MHz = 4;
constexpr int kNumbersInside = 34;  // pixels from the circle
constexpr int kNumberRoom = 17;     // to either side of a number
constexpr int kNeedleFrom = 186, kNeedlePen = 5;

constexpr COLORREF kLime = 0x1FC28D, kWhite = 0xFFFFFF, kGrey = 0xBFB5A9, kPaleYellow = 0xAFFFFF;

struct DialText {
    int x, y;  // of the upper left corner, from the middle of the circle
    int cx, cy;
    LONG lfHeight, lfWeight;
    COLORREF crText;
    UINT uFormat;
};
constexpr UINT kOneLine = DT_SINGLELINE | DT_NOPREFIX;
constexpr UINT kEndsInDots = 0x40000;
constexpr DialText kNumber = {-20, -9, 40, 18, 15, 400, kGrey, kOneLine | DT_CENTER | DT_VCENTER};
constexpr DialText kFrequency = {-160, -128, 146, 60, 54, 700, kWhite, kOneLine | DT_RIGHT | DT_VCENTER};
constexpr DialText kUnit = {-160, -72, 146, 22, 18, 400, kGrey, kOneLine | DT_RIGHT | DT_VCENTER};
constexpr DialText kName = {-160, -42, 146,         28,
                            22,   400, kPaleYellow, kOneLine | DT_RIGHT | DT_VCENTER | kEndsInDots};

double DegreesOf(std::uint32_t channel) {
    return kFirst_deg +
           (std::clamp(channel, kLowest_10kHz, kHighest_10kHz) - kLowest_10kHz) * kPerChannel_deg;
}

// In the box.
POINT At(const Dial& dial, double degrees, int radius) {
    const double angle = degrees * 3.14159265358979 / 180;
    return {dial.xMiddle - dial.box.x - std::lround(std::cos(angle) * radius),
            dial.yMiddle - dial.box.y - std::lround(std::sin(angle) * radius)};
}

void Write(HDC dc, POINT middle, const DialText& look, const WCHAR* text) {
    LOGFONTW shape = {};
    GetObjectW(GetStockObject(SYSTEM_FONT), sizeof(shape), &shape);
    shape.lfWidth = 0;
    shape.lfHeight = look.lfHeight;
    shape.lfWeight = look.lfWeight;
    const OwnedFont font(CreateFontIndirectW(&shape));
    const SelectObjectGuard selected(dc, font.get());
    SetTextColor(dc, look.crText);
    RECT place = {middle.x + look.x, middle.y + look.y, middle.x + look.x + look.cx,
                  middle.y + look.y + look.cy};
    DrawTextW(dc, text, -1, &place, look.uFormat);
}

void WriteNumbers(HDC dc, const Dial& dial) {
    for (int number = kLowestNumber_MHz; number <= kHighestNumber_MHz; number += kNumberStep_MHz) {
        WCHAR text[4] = {static_cast<WCHAR>(L'0' + number / 100), static_cast<WCHAR>(L'0' + number / 10 % 10),
                         static_cast<WCHAR>(L'0' + number % 10), L'\0'};
        const double degrees = DegreesOf(static_cast<std::uint32_t>(number) * 100);
        Write(dc, At(dial, degrees, dial.radius - kNumbersInside), kNumber, number < 100 ? text + 1 : text);
    }
}

void DrawRay(HDC dc, const Dial& dial, std::uint32_t channel, int fromRadius, int toRadius) {
    const POINT from = At(dial, DegreesOf(channel), fromRadius);
    const POINT to = At(dial, DegreesOf(channel), toRadius);
    MoveToEx(dc, from.x, from.y, nullptr);
    LineTo(dc, to.x, to.y);
}

// In two pieces, so that a number between them can be read.
void DrawNeedle(HDC dc, const Dial& dial, std::uint32_t channel) {
    const OwnedPen pen(CreatePen(PS_SOLID, kNeedlePen, kLime));
    const SelectObjectGuard selected(dc, pen.get());
    DrawRay(dc, dial, channel, kNeedleFrom, dial.radius - kNumbersInside - kNumberRoom);
    DrawRay(dc, dial, channel, dial.radius - kNumbersInside + kNumberRoom, dial.radius + 4);
}

}  // namespace

void DrawDial(const CSkin& skin, std::uint32_t channel, const WCHAR* frequency, const WCHAR* name) {
    RECT client = {};
    if (!GetClientRect(skin.hWnd, &client) || IsRectEmpty(&client)) return;
    const WindowDC window(skin.hWnd);
    const BitmapSource source(skin, window.get());
    if (!source.Screen().bWide) return;
    const Dial& dial = source.Screen().bPortrait ? kPortraitDial : kLandscapeDial;

    const OffscreenImage image(window.get(), dial.box.cx, dial.box.cy);
    if (!image) return;
    source.CopyBackground(dial.box, image.dc(), 0, 0);
    SetBkMode(image.dc(), TRANSPARENT);
    WriteNumbers(image.dc(), dial);
    DrawNeedle(image.dc(), dial, channel);
    const POINT middle = At(dial, 0, 0);
    Write(image.dc(), middle, kFrequency, frequency);
    Write(image.dc(), middle, kUnit, L"MHz");
    Write(image.dc(), middle, kName, name);
    ExcludeClipRect(window.get(), dial.face.x, dial.face.y, dial.face.cx, dial.face.cy);
    image.CopyTo(window.get(), dial.box.x, dial.box.y);
}
