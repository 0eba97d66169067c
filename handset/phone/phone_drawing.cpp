// The phone itself: body, glass, keys and their signs.
#include <cmath>
#include <iterator>

#include "handset/phone/panel_picture.h"
#include "handset/phone/phone_keys.h"

namespace panel {
namespace {

constexpr Paint kLabel = Rgb(0xF1F1ED);
constexpr Paint kLetters = Rgb(0x9CA2AA);
constexpr Paint kCallGreen = Rgb(0x7FD03A);
constexpr Paint kEndRed = Rgb(0xF0524B);
constexpr double kQuarter = 1.57079632679489661923;

Spot Middle(const Box& box) {
    return {box.x + box.w / 2.0, box.y + box.h / 2.0};
}

void DrawBody(CCanvas& canvas, const PhoneLayout& phone) {
    Rounded shadow = Shape(phone.body, 34);
    shadow.y += 5;
    canvas.Shadow(shadow, 13, Rgb(0x3B352B, 0.34));
    canvas.Fill(Shape(phone.body, 34), Rgb(0x8B9099), Rgb(0x17181B));
    canvas.Fill(Shape(phone.body, 34).Inset(1.5), Rgb(0x565A62), Rgb(0x1C1D21));
    canvas.Fill(Shape(phone.body, 34).Inset(5), Rgb(0x3A3D44), Rgb(0x26282D));
    canvas.Outline(Shape(phone.body, 34).Inset(5), 1, Rgb(0x6B707A, 0.45), Rgb(0x000000, 0.35));
    canvas.Fill(Shape(phone.speaker, 3), Rgb(0x0C0D0F), Rgb(0x1E2024));
    canvas.Outline(Shape(phone.speaker, 3), 1, Rgb(0x000000, 0.7), Rgb(0x5C6068, 0.8));
    canvas.Fill(Shape(phone.glass, 9), Rgb(0x0E0F12), Rgb(0x060607));
    canvas.Outline(Shape(phone.glass, 9), 1.2, Rgb(0x000000), Rgb(0x565A62));
    canvas.Fill(Shape(phone.display, 0), Rgb(0x101215), Rgb(0x08090A));
}

void DrawKeyFace(CCanvas& canvas, const Box& box, double radius, bool pressed) {
    Rounded shape = Shape(box, radius);
    if (!pressed) {
        Rounded shadow = shape;
        shadow.y += 2;
        canvas.Shadow(shadow, 4, Rgb(0x000000, 0.55));
        canvas.Fill(shape, Rgb(0x5D626B), Rgb(0x3F434A));
        canvas.Outline(shape, 1, Rgb(0x9197A1, 0.75), Rgb(0x26282C, 0.6));
        return;
    }
    canvas.Fill(shape, Rgb(0x24262A), Rgb(0x33363C));
    canvas.Outline(shape, 1.4, kAccent, kAccent);
}

// A receiver: a bow with two thick ends, its hollow side where `angle` points.
void DrawReceiver(CCanvas& canvas, Spot middle, double angle, Paint paint) {
    constexpr double kRadius = 9;
    constexpr double kHalfBow = 1.05;
    constexpr int kPieces = 10;
    const Spot centre = {middle.x + 6 * std::cos(angle), middle.y + 6 * std::sin(angle)};
    const auto onBow = [&](double turn, double radius) {
        const double direction = angle + 2 * kQuarter + turn;
        return Spot{centre.x + radius * std::cos(direction), centre.y + radius * std::sin(direction)};
    };
    for (int i = 0; i < kPieces; ++i) {
        canvas.Stroke(onBow(-kHalfBow + 2 * kHalfBow * i / kPieces, kRadius),
                      onBow(-kHalfBow + 2 * kHalfBow * (i + 1) / kPieces, kRadius), 3.4, paint);
    }
    for (const double end : {-kHalfBow, kHalfBow}) {
        canvas.Stroke(onBow(end, kRadius - 0.5), onBow(end * 0.96, kRadius - 3.2), 5.4, paint);
    }
}

void DrawArrow(CCanvas& canvas, const Box& box, double dx, double dy, bool pressed) {
    const Spot m = Middle(box);
    const Paint paint = pressed ? kAccent : kLabel;
    canvas.Triangle({m.x + 5 * dx, m.y + 5 * dy}, {m.x - 3 * dx + 5.5 * dy, m.y - 3 * dy + 5.5 * dx},
                    {m.x - 3 * dx - 5.5 * dy, m.y - 3 * dy - 5.5 * dx}, paint);
}

void DrawPad(CCanvas& canvas, const PanelView& view) {
    const Box& pad = view.phone.pad;
    DrawKeyFace(canvas, pad, 26, false);
    struct Arrow {
        PhoneKey key;
        double dx, dy;
    };
    const Arrow kArrows[] = {
        {PhoneKey::kUp, 0, -1}, {PhoneKey::kDown, 0, 1}, {PhoneKey::kLeft, -1, 0}, {PhoneKey::kRight, 1, 0}};
    for (const Arrow& row : kArrows) {
        if (const Box* box = PlaceOf(view.phone, row.key)) {
            DrawArrow(canvas, *box, row.dx, row.dy, view.pressedKey == row.key);
        }
    }
    const Box* middle = PlaceOf(view.phone, PhoneKey::kReturn);
    if (middle == nullptr) return;
    const bool pressed = view.pressedKey == PhoneKey::kReturn;
    const Rounded ring = Shape(*middle, middle->w / 2.0).Inset(-2);
    canvas.Fill(ring, Rgb(0x1A1B1E), Rgb(0x2A2C31));
    canvas.Outline(ring, 1.6, kAccent, kAccent);
    canvas.Fill(ring.Inset(4), pressed ? Rgb(0x24262A) : Rgb(0x6A6F78),
                pressed ? Rgb(0x33363C) : Rgb(0x474B53));
}

void DrawSign(CCanvas& canvas, const PanelView& view, const KeyPlace& place) {
    const Spot m = Middle(place.box);
    const double turn = view.phone.landscape ? -kQuarter : 0;
    const bool soft = place.key == PhoneKey::kSoftLeft || place.key == PhoneKey::kSoftRight;
    if (soft && view.phone.landscape) canvas.Stroke({m.x, m.y - 9}, {m.x, m.y + 9}, 3, kLabel);
    if (soft && !view.phone.landscape) canvas.Stroke({m.x - 9, m.y}, {m.x + 9, m.y}, 3, kLabel);
    if (place.key == PhoneKey::kCall) DrawReceiver(canvas, m, -kQuarter / 2 + turn, kCallGreen);
    if (place.key == PhoneKey::kHangUp) DrawReceiver(canvas, m, kQuarter + turn, kEndRed);
}

bool OnPad(PhoneKey key) {
    return key == PhoneKey::kUp || key == PhoneKey::kDown || key == PhoneKey::kLeft ||
           key == PhoneKey::kRight || key == PhoneKey::kReturn;
}

// The small letters beside the digits 0 to 9.
constexpr const wchar_t* kDigitLetters[] = {L"+",   L"",    L"abc",  L"def", L"ghi",
                                            L"jkl", L"mno", L"pqrs", L"tuv", L"wxyz"};

void DrawKeyTexts(HDC dc, const PanelView& view, const KeyPlace& place) {
    const PhoneKeyRow& row = RowOf(place.key);
    if (row.label[0] == 0) return;
    const Spot m = Middle(place.box);
    const int x = static_cast<int>(m.x);
    const int y = static_cast<int>(m.y);
    const bool turned = view.phone.landscape;
    const bool digit = place.key >= PhoneKey::k0 && place.key <= PhoneKey::k9;
    const wchar_t* letters =
        digit ? kDigitLetters[static_cast<int>(place.key) - static_cast<int>(PhoneKey::k0)] : L"";
    const int aside = letters[0] != 0 ? 13 : 0;
    const auto mark = [&](int along, const wchar_t* text, int size, int weight, Paint paint) {
        DrawTextMark(dc, {turned ? x : x + along, turned ? y - along : y, text, size, weight, paint,
                          TextAnchor::kMiddle, turned});
    };
    mark(-aside, row.label, 17, FW_BOLD, view.pressedKey == place.key ? kAccent : kLabel);
    if (aside != 0) mark(aside, letters, 10, FW_NORMAL, kLetters);
}

}  // namespace

void DrawPhoneShapes(CCanvas& canvas, const PanelView& view) {
    DrawBody(canvas, view.phone);
    DrawPad(canvas, view);
    for (const KeyPlace& place : view.phone.keys) {
        if (OnPad(place.key)) continue;
        DrawKeyFace(canvas, place.box, 11, view.pressedKey == place.key);
        DrawSign(canvas, view, place);
    }
}

void DrawPhoneTexts(HDC dc, const PanelView& view) {
    for (const KeyPlace& place : view.phone.keys) DrawKeyTexts(dc, view, place);
    const PhoneLayout& phone = view.phone;
    // The name stands between the speaker and the glass.
    const Spot speaker = Middle(phone.speaker);
    const int x = phone.landscape ? (phone.speaker.Right() + phone.glass.x) / 2 : static_cast<int>(speaker.x);
    const int y =
        phone.landscape ? static_cast<int>(speaker.y) : (phone.speaker.Bottom() + phone.glass.y) / 2;
    DrawTextMark(dc, {x, y, L"KORA", 10, FW_BOLD, Rgb(0xB4B9C0), TextAnchor::kMiddle, phone.landscape, 3});
    if (!view.now.radio && view.now.lit) {
        const Spot middle = Middle(phone.display);
        DrawTextMark(dc, {static_cast<int>(middle.x), static_cast<int>(middle.y), L"The radio is off", 13,
                          FW_NORMAL, Rgb(0x6F757D)});
    }
}

}  // namespace panel
