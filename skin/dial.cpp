// The dial of a wide screen, beside the face: its circle and its marks are part of the background.
#include <algorithm>
#include <array>

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
constexpr double kFirst_deg = 4, kPerRay_deg = 0.4;

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

// Where a ray of the dial points: cosine and sine, in 1/4096, of the angle from the left upwards.
struct Ray {
    int cosine, sine;
};
constexpr int kWhole = 4096;
constexpr std::uint32_t kRayStep_10kHz = 10;
constexpr std::size_t kRays = (kHighest_10kHz - kLowest_10kHz) / kRayStep_10kHz + 1;

// sin x = x (1 - x²/(2·3) (1 - x²/(4·5) (…))), for angles of the first quarter.
constexpr double Sine(double radians) {
    double series = 1;
    for (int term = 18; term >= 2; term -= 2) series = 1 - radians * radians / (term * (term + 1)) * series;
    return radians * series;
}
constexpr int InWhole(double part) {
    return static_cast<int>(part * kWhole + 0.5);
}
// The compiler's work: the phone has no arithmetic of its own for such numbers.
constexpr std::array<Ray, kRays> AllRays() {
    constexpr double kQuarter = 1.5707963267948966;
    std::array<Ray, kRays> rays = {};
    for (std::size_t i = 0; i < kRays; ++i) {
        const double angle = (kFirst_deg + kPerRay_deg * static_cast<double>(i)) * kQuarter / 90;
        rays[i] = {InWhole(Sine(kQuarter - angle)), InWhole(Sine(angle))};
    }
    return rays;
}
constexpr std::array<Ray, kRays> kAllRays = AllRays();

const Ray& RayOf(std::uint32_t channel) {
    return kAllRays[(std::clamp(channel, kLowest_10kHz, kHighest_10kHz) - kLowest_10kHz) / kRayStep_10kHz];
}

// In the box.
POINT Middle(const Dial& dial) {
    return {dial.xMiddle - dial.box.x, dial.yMiddle - dial.box.y};
}
POINT At(const Dial& dial, const Ray& ray, int radius) {
    const POINT middle = Middle(dial);
    return {middle.x - (ray.cosine * radius + kWhole / 2) / kWhole,
            middle.y - (ray.sine * radius + kWhole / 2) / kWhole};
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
        const Ray& ray = RayOf(static_cast<std::uint32_t>(number) * 100);
        Write(dc, At(dial, ray, dial.radius - kNumbersInside), kNumber, number < 100 ? text + 1 : text);
    }
}

void DrawRay(HDC dc, const Dial& dial, const Ray& ray, int fromRadius, int toRadius) {
    const POINT from = At(dial, ray, fromRadius);
    const POINT to = At(dial, ray, toRadius);
    MoveToEx(dc, from.x, from.y, nullptr);
    LineTo(dc, to.x, to.y);
}

// In two pieces, so that a number between them can be read.
void DrawNeedle(HDC dc, const Dial& dial, std::uint32_t channel) {
    const OwnedPen pen(CreatePen(PS_SOLID, kNeedlePen, kLime));
    const SelectObjectGuard selected(dc, pen.get());
    const Ray& ray = RayOf(channel);
    DrawRay(dc, dial, ray, kNeedleFrom, dial.radius - kNumbersInside - kNumberRoom);
    DrawRay(dc, dial, ray, dial.radius - kNumbersInside + kNumberRoom, dial.radius + 4);
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
    const POINT middle = Middle(dial);
    Write(image.dc(), middle, kFrequency, frequency);
    Write(image.dc(), middle, kUnit, L"MHz");
    Write(image.dc(), middle, kName, name);
    ExcludeClipRect(window.get(), dial.face.x, dial.face.y, dial.face.cx, dial.face.cy);
    image.CopyTo(window.get(), dial.box.x, dial.box.y);
}
