// The phone's geometry: laid out upright, then turned with the screen.
#include "handset/phone/phone_layout.h"

#include <cstdlib>

namespace panel {
namespace {

// Pixels of the upright phone.
constexpr int kMargin = 14;
constexpr int kSide = 22;  // between the display and the body's edge
constexpr int kTop = 54;   // above the display
constexpr int kGlassRim = 7;
constexpr int kKeyWidth = 74;  // at least: three of them fill the phone's width
constexpr int kKeyGap = 8;     // between them, at least
constexpr int kSoftHeight = 30;
constexpr int kCallHeight = 32;
constexpr int kPadSize = 80;
constexpr int kDigitHeight = 27;
constexpr int kDigitPitch = 32;
constexpr int kBelowDisplay = 18;
constexpr int kBelowPad = 10;
constexpr int kBottom = 22;
constexpr int kCloseSize = 20;
constexpr int kColumnWidth = 172;
constexpr int kBandGap = 12;
constexpr int kColumnHeight = 192;  // below a phone that lies on its side

struct UprightPhone {
    int width, height;  // of the body
    int keyWidth;
    Box display, speaker, pad;
    std::vector<KeyPlace> keys;
};

void AddPad(UprightPhone& phone, const Box& pad) {
    const int third = pad.w / 3;
    const int rest = pad.w - 2 * third;
    phone.pad = pad;
    phone.keys.push_back({PhoneKey::kReturn, {pad.x + third, pad.y + third, rest, rest}});
    phone.keys.push_back({PhoneKey::kUp, {pad.x + third, pad.y, rest, third}});
    phone.keys.push_back({PhoneKey::kDown, {pad.x + third, pad.Bottom() - third, rest, third}});
    phone.keys.push_back({PhoneKey::kLeft, {pad.x, pad.y + third, third, rest}});
    phone.keys.push_back({PhoneKey::kRight, {pad.Right() - third, pad.y + third, third, rest}});
}

void AddDigits(UprightPhone& phone, int top) {
    const PhoneKey kGrid[4][3] = {{PhoneKey::k1, PhoneKey::k2, PhoneKey::k3},
                                  {PhoneKey::k4, PhoneKey::k5, PhoneKey::k6},
                                  {PhoneKey::k7, PhoneKey::k8, PhoneKey::k9},
                                  {PhoneKey::kStar, PhoneKey::k0, PhoneKey::kHash}};
    const int columns[3] = {kSide, (phone.width - phone.keyWidth) / 2, phone.width - kSide - phone.keyWidth};
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column) {
            phone.keys.push_back({kGrid[row][column],
                                  {columns[column], top + row * kDigitPitch, phone.keyWidth, kDigitHeight}});
        }
    }
}

UprightPhone LayOutUpright(int screenShort, int screenLong) {
    UprightPhone phone{};
    phone.width = screenShort + 2 * kSide;
    const int least = 3 * kKeyWidth + 2 * (kSide + kKeyGap);
    if (phone.width < least) phone.width = least;
    phone.keyWidth = (phone.width - 2 * (kSide + kKeyGap)) / 3;
    phone.display = {(phone.width - screenShort) / 2, kTop, screenShort, screenLong};
    phone.speaker = {phone.width / 2 - 30, 24, 60, 6};
    const int softTop = phone.display.Bottom() + kBelowDisplay;
    const int right = phone.width - kSide - phone.keyWidth;
    phone.keys.push_back({PhoneKey::kSoftLeft, {kSide, softTop, phone.keyWidth, kSoftHeight}});
    phone.keys.push_back({PhoneKey::kSoftRight, {right, softTop, phone.keyWidth, kSoftHeight}});
    const int callTop = softTop + kPadSize - kCallHeight;
    phone.keys.push_back({PhoneKey::kCall, {kSide, callTop, phone.keyWidth, kCallHeight}});
    phone.keys.push_back({PhoneKey::kHangUp, {right, callTop, phone.keyWidth, kCallHeight}});
    AddPad(phone, {(phone.width - kPadSize) / 2, softTop, kPadSize, kPadSize});
    const int digitsTop = softTop + kPadSize + kBelowPad;
    AddDigits(phone, digitsTop);
    phone.height = digitsTop + 3 * kDigitPitch + kDigitHeight + kBottom;
    return phone;
}

// Turned a quarter to the left: the phone's top comes to lie on the left.
Box Turned(const Box& box, int uprightWidth) {
    return {box.y, uprightWidth - box.Right(), box.h, box.w};
}

// An arrow key points where the screen's own directions are, as the handset's keyboard driver has it.
PhoneKey TurnedKey(PhoneKey key) {
    struct Row {
        PhoneKey upright, turned;
    };
    const Row kRows[] = {{PhoneKey::kUp, PhoneKey::kLeft},
                         {PhoneKey::kLeft, PhoneKey::kDown},
                         {PhoneKey::kDown, PhoneKey::kRight},
                         {PhoneKey::kRight, PhoneKey::kUp}};
    for (const Row& row : kRows) {
        if (row.upright == key) return row.turned;
    }
    return key;
}

Box Moved(const Box& box, int dx, int dy) {
    return {box.x + dx, box.y + dy, box.w, box.h};
}

}  // namespace

PhoneLayout LayOutPhone(int screenWidth, int screenHeight) {
    PhoneLayout layout{};
    layout.landscape = screenWidth > screenHeight;
    const UprightPhone phone = layout.landscape ? LayOutUpright(screenHeight, screenWidth)
                                                : LayOutUpright(screenWidth, screenHeight);
    const auto place = [&](const Box& box) {
        return Moved(layout.landscape ? Turned(box, phone.width) : box, kMargin, kMargin);
    };
    layout.body = place({0, 0, phone.width, phone.height});
    layout.display = place(phone.display);
    layout.speaker = place(phone.speaker);
    layout.pad = place(phone.pad);
    for (const KeyPlace& row : phone.keys) {
        layout.keys.push_back({layout.landscape ? TurnedKey(row.key) : row.key, place(row.box)});
    }
    const Box& d = layout.display;
    layout.glass = {d.x - kGlassRim, d.y - kGlassRim, d.w + 2 * kGlassRim, d.h + 2 * kGlassRim};
    if (layout.landscape) {
        layout.band = {kMargin, layout.body.Bottom() + kBandGap, layout.body.w, kBandHeight};
        layout.column = {kMargin, layout.band.Bottom() + kMargin, layout.body.w, kColumnHeight};
        layout.width = layout.body.Right() + kMargin;
        layout.height = layout.column.Bottom() + kMargin;
    } else {
        layout.column = {layout.body.Right() + kMargin, kMargin, kColumnWidth, layout.body.h};
        layout.width = layout.column.Right() + kMargin;
        layout.band = {kMargin, layout.body.Bottom() + kBandGap, layout.width - 2 * kMargin, kBandHeight};
        layout.height = layout.band.Bottom() + kMargin;
    }
    layout.close = {layout.column.Right() - kCloseSize, layout.column.y - 4, kCloseSize, kCloseSize};
    return layout;
}

const Box* PlaceOf(const PhoneLayout& layout, PhoneKey key) {
    for (const KeyPlace& row : layout.keys) {
        if (row.key == key) return &row.box;
    }
    return nullptr;
}

std::optional<PhoneKey> KeyAt(const PhoneLayout& layout, int x, int y) {
    for (const KeyPlace& row : layout.keys) {
        if (row.box.Contains(x, y)) return row.key;
    }
    if (!layout.pad.Contains(x, y)) return std::nullopt;
    const int dx = 2 * (x - layout.pad.x) + 1 - layout.pad.w;
    const int dy = 2 * (y - layout.pad.y) + 1 - layout.pad.h;
    if (std::abs(dx) > std::abs(dy)) return dx < 0 ? PhoneKey::kLeft : PhoneKey::kRight;
    return dy < 0 ? PhoneKey::kUp : PhoneKey::kDown;
}

}  // namespace panel
