// The phone itself: body, glass, keys and what is printed on them. Texts are written and no pictures: they
// are the device's own font's, which fits small letters to pixels and is the same on every host.
#include "handset/base/rows.h"
#include "handset/phone/panel_picture.h"
#include "handset/phone/phone_art.h"
#include "handset/phone/phone_keys.h"

namespace panel {
namespace {

constexpr Paint kLabel = Rgb(0xF1F1ED);
constexpr Paint kLetters = Rgb(0xA6ACB4);

struct Spot {
    int x, y;
};
Spot Middle(const Box& box) {
    return {box.x + box.w / 2, box.y + box.h / 2};
}

void DrawBody(CCanvas& canvas, const PhoneLayout& phone) {
    DrawArt(canvas, Art::kBody, phone.body);
    DrawArt(canvas, phone.landscape ? Art::kSpeakerTurned : Art::kSpeaker, phone.speaker);
    DrawArt(canvas, Art::kGlass, phone.glass);
}

// The keys of the pad have no face of their own.
struct PadKey {
    PhoneKey key;
    Art up, down;
};
constexpr PadKey kPadKeys[] = {
    {PhoneKey::kUp, Art::kArrowUp, Art::kArrowUpLit},
    {PhoneKey::kDown, Art::kArrowDown, Art::kArrowDownLit},
    {PhoneKey::kLeft, Art::kArrowLeft, Art::kArrowLeftLit},
    {PhoneKey::kRight, Art::kArrowRight, Art::kArrowRightLit},
    {PhoneKey::kReturn, Art::kReturnUp, Art::kReturnDown},
};

struct KeySign {
    PhoneKey key;
    Art upright, turned;
};
constexpr KeySign kSigns[] = {
    {PhoneKey::kSoftLeft, Art::kSoftSign, Art::kSoftSignTurned},
    {PhoneKey::kSoftRight, Art::kSoftSign, Art::kSoftSignTurned},
    {PhoneKey::kCall, Art::kCallSign, Art::kCallSignTurned},
    {PhoneKey::kHangUp, Art::kEndSign, Art::kEndSignTurned},
};

void DrawKey(CCanvas& canvas, const PanelView& view, const KeyPlace& place) {
    const bool pressed = view.pressedKey == place.key;
    if (const PadKey* row = handset::RowWith(kPadKeys, &PadKey::key, place.key)) {
        DrawArt(canvas, pressed ? row->down : row->up, place.box);
        return;
    }
    DrawArt(canvas, pressed ? Art::kKeyDown : Art::kKeyUp, place.box);
    const KeySign* sign = handset::RowWith(kSigns, &KeySign::key, place.key);
    if (sign != nullptr) DrawArt(canvas, view.phone.landscape ? sign->turned : sign->upright, place.box);
}

// The small letters beside the digits 0 to 9.
constexpr const wchar_t* kDigitLetters[] = {L"+",   L"",    L"abc",  L"def", L"ghi",
                                            L"jkl", L"mno", L"pqrs", L"tuv", L"wxyz"};

void DrawKeyTexts(HDC dc, const PanelView& view, const KeyPlace& place) {
    const PhoneKeyRow& row = RowOf(place.key);
    if (row.label[0] == 0) return;
    const Spot m = Middle(place.box);
    const bool turned = view.phone.landscape;
    const bool digit = place.key >= PhoneKey::k0 && place.key <= PhoneKey::k9;
    const wchar_t* letters =
        digit ? kDigitLetters[static_cast<int>(place.key) - static_cast<int>(PhoneKey::k0)] : L"";
    const int aside = letters[0] != 0 ? 13 : 0;
    const auto mark = [&](int along, const wchar_t* text, int size, int weight, Paint paint) {
        DrawTextMark(dc, {turned ? m.x : m.x + along, turned ? m.y - along : m.y, text, size, weight, paint,
                          TextAnchor::kMiddle, turned});
    };
    mark(-aside, row.label, 17, FW_BOLD, view.pressedKey == place.key ? kAccent : kLabel);
    if (aside != 0) mark(aside, letters, 10, FW_NORMAL, kLetters);
}

}  // namespace

void DrawPhoneShapes(CCanvas& canvas, const PanelView& view) {
    DrawBody(canvas, view.phone);
    DrawArt(canvas, Art::kPad, view.phone.pad);
    for (const KeyPlace& place : view.phone.keys) DrawKey(canvas, view, place);
}

void DrawPhoneTexts(HDC dc, const PanelView& view) {
    for (const KeyPlace& place : view.phone.keys) DrawKeyTexts(dc, view, place);
    const PhoneLayout& phone = view.phone;
    // The name stands between the speaker and the glass.
    const Spot speaker = Middle(phone.speaker);
    const int x = phone.landscape ? (phone.speaker.Right() + phone.glass.x) / 2 : speaker.x;
    const int y = phone.landscape ? speaker.y : (phone.speaker.Bottom() + phone.glass.y) / 2;
    DrawTextMark(dc, {x, y, L"KORA", 10, FW_BOLD, Rgb(0xC3C8CF), TextAnchor::kMiddle, phone.landscape, 3});
    if (!view.now.radio && view.now.lit) {
        const Spot middle = Middle(phone.display);
        DrawTextMark(dc, {middle.x, middle.y, L"The radio is off", 13, FW_NORMAL, Rgb(0x7A8088)});
    }
}

}  // namespace panel
