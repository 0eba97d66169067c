// The switches beside the phone, drawn.
#include <cwchar>
#include <iterator>

#include "handset/controls/station_name.h"
#include "handset/phone/panel_focus.h"
#include "handset/phone/panel_picture.h"
#include "handset/phone/phone_art.h"

namespace panel {
namespace {

constexpr Paint kInk = Rgb(0x2E2F31);
constexpr Paint kTitle = Rgb(0x8C877D);
constexpr Paint kLine = Rgb(0xCAC5BC, 0.6);
constexpr int kPillWidth = 38;
constexpr int kPillHeight = 21;
constexpr int kKnobSize = 16;
constexpr int kNoteGap = 8;

void DrawToggle(CCanvas& canvas, const SwitchPlace& place, const PanelView& view) {
    constexpr Art kFaces[2][2] = {{Art::kToggleOff, Art::kToggleOffDown},
                                  {Art::kToggleOn, Art::kToggleOnDown}};
    const Box& b = place.box;
    const bool on = place.row->isOn(view.now);
    const bool pressed = view.pressedSwitch == place.row;
    DrawArt(canvas, kFaces[on][pressed],
            {b.Right() - kPillWidth, b.y + (b.h - kPillHeight) / 2, kPillWidth, kPillHeight});
    canvas.Fill({static_cast<double>(b.x), b.Bottom() - 1.0, static_cast<double>(b.w), 1}, kLine);
}

void DrawButton(CCanvas& canvas, const SwitchPlace& place, const PanelView& view) {
    const bool pressed = view.pressedSwitch == place.row;
    DrawArt(canvas,
            place.row->isOn(view.now) ? Art::kButtonLit
            : pressed                 ? Art::kButtonDown
                                      : Art::kButtonUp,
            place.box);
}

void DrawSlider(CCanvas& canvas, const SwitchPlace& place, const PanelView& view) {
    const Box track = SliderTrack(place.box);
    const int lit = track.w * static_cast<int>(view.now.signalLimit) / 100;
    DrawArt(canvas, Art::kTrack, track);
    DrawArt(canvas, Art::kTrackLit, {track.x, track.y, lit, track.h});
    DrawArt(canvas, Art::kKnob,
            {track.x + lit - kKnobSize / 2, track.y + (track.h - kKnobSize) / 2, kKnobSize, kKnobSize});
}

void DrawLabel(HDC dc, const SwitchPlace& place, const PanelView& view) {
    const Box& b = place.box;
    const bool on = place.row->isOn(view.now);
    if (place.row->kind == SwitchKind::kButton || place.row->kind == SwitchKind::kChip) {
        DrawTextMark(
            dc, {b.x + b.w / 2, b.y + b.h / 2, place.row->label, 12, FW_NORMAL, on ? Rgb(0xFFFFFF) : kInk});
        return;
    }
    const int y = place.row->kind == SwitchKind::kSlider ? b.y + 10 : b.y + b.h / 2;
    DrawTextMark(dc, {b.x, y, place.row->label, 13, FW_NORMAL, kInk, TextAnchor::kLeft});
    if (place.row->note != nullptr) {
        DrawTextMark(dc, {b.Right() - kPillWidth - kNoteGap, y, place.row->note(view.now), 12, FW_NORMAL,
                          kTitle, TextAnchor::kRight});
    }
    if (place.row->kind != SwitchKind::kSlider) return;
    wchar_t limit[32] = L"as it is";
    const std::wstring station =
        view.now.limitedChannel != 0 ? StationText(view.now.limitedChannel) + L": " : L"";
    if (on) swprintf(limit, std::size(limit), L"%ls\x2264 %u", station.c_str(), view.now.signalLimit);
    DrawTextMark(dc, {b.Right(), y, limit, 12, FW_NORMAL, kTitle, TextAnchor::kRight});
}

}  // namespace

void DrawColumnShapes(CCanvas& canvas, const PanelView& view) {
    DrawArt(canvas, Art::kClose, view.phone.close);
    using Draw = void (*)(CCanvas&, const SwitchPlace&, const PanelView&);
    const Draw kDraw[] = {DrawToggle, DrawButton, DrawButton, DrawSlider};
    for (const SwitchPlace& place : view.column.switches) {
        kDraw[static_cast<int>(place.row->kind)](canvas, place, view);
    }
    if (!view.focus) return;
    DrawArt(canvas, Art::kFocus, BoxOfPlace(view.column, view.phone.close, *view.focus));
}

void DrawColumnTexts(HDC dc, const PanelView& view) {
    for (const TitlePlace& title : view.column.titles) {
        DrawTextMark(dc, {title.box.x, title.box.y + 7, title.group->title, 10, FW_BOLD, kTitle,
                          TextAnchor::kLeft, false, 1});
    }
    for (const SwitchPlace& place : view.column.switches) DrawLabel(dc, place, view);
}

}  // namespace panel
