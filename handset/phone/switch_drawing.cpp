// The switches beside the phone, drawn.
#include <cwchar>
#include <iterator>

#include "handset/controls/station_name.h"
#include "handset/phone/panel_focus.h"
#include "handset/phone/panel_picture.h"

namespace panel {
namespace {

constexpr Paint kInk = Rgb(0x2E2F31);
constexpr Paint kTitle = Rgb(0x8C877D);
constexpr Paint kLine = Rgb(0xCAC5BC);
constexpr int kPillWidth = 38;
constexpr int kPillHeight = 21;
constexpr int kNoteGap = 8;
constexpr double kFocusGap = 3, kFocusLine = 2;

void DrawKnob(CCanvas& canvas, double x, double y, double radius) {
    canvas.Shadow({x - radius, y - radius + 1, 2 * radius, 2 * radius, radius}, 3, Rgb(0x000000, 0.28));
    canvas.Fill({x - radius, y - radius, 2 * radius, 2 * radius, radius}, Rgb(0xFFFFFF), Rgb(0xF0EEEA));
}

void DrawToggle(CCanvas& canvas, const SwitchPlace& place, const PanelView& view) {
    const bool on = place.row->isOn(view.now);
    const Box& b = place.box;
    const Box pill = {b.Right() - kPillWidth, b.y + (b.h - kPillHeight) / 2, kPillWidth, kPillHeight};
    const bool pressed = view.pressedSwitch == place.row;
    canvas.Fill(Shape(pill, kPillHeight / 2.0), on ? Rgb(0x7FB018) : Rgb(0xB9B4AA),
                on ? kAccent : Rgb(0xC9C4BB));
    if (pressed) canvas.Outline(Shape(pill, kPillHeight / 2.0), 1.5, kInk, kInk);
    const double knob = on ? pill.Right() - kPillHeight / 2.0 : pill.x + kPillHeight / 2.0;
    DrawKnob(canvas, knob, pill.y + kPillHeight / 2.0, kPillHeight / 2.0 - 2);
    canvas.Fill(Shape({b.x, b.Bottom() - 1, b.w, 1}, 0), Rgb(0xCAC5BC, 0.6));
}

void DrawButton(CCanvas& canvas, const SwitchPlace& place, const PanelView& view) {
    const bool on = place.row->isOn(view.now);
    const bool pressed = view.pressedSwitch == place.row;
    const Rounded shape = Shape(place.box, 8);
    if (!pressed) canvas.Shadow({shape.x, shape.y + 1, shape.w, shape.h, 8}, 2.5, Rgb(0x3B352B, 0.22));
    const Paint top = on ? Rgb(0x9BCF2C) : pressed ? Rgb(0xDEDAD3) : Rgb(0xFFFFFF);
    const Paint bottom = on ? Rgb(0x7FB018) : pressed ? Rgb(0xE8E5DF) : Rgb(0xF4F2EE);
    canvas.Fill(shape, top, bottom);
    canvas.Outline(shape, 1, on ? Rgb(0x6E9A12) : kLine, on ? Rgb(0x6E9A12) : kLine);
}

void DrawSlider(CCanvas& canvas, const SwitchPlace& place, const PanelView& view) {
    const Box track = SliderTrack(place.box);
    const double position = track.x + track.w * static_cast<double>(view.now.signalLimit) / 100;
    canvas.Fill(Shape(track, 2), Rgb(0xC3BEB4), Rgb(0xCFCAC1));
    canvas.Fill({static_cast<double>(track.x), static_cast<double>(track.y), position - track.x,
                 static_cast<double>(track.h), 2},
                kAccent);
    DrawKnob(canvas, position, track.y + track.h / 2.0, 8);
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
    const Box& close = view.phone.close;
    const Spot m = {close.x + close.w / 2.0, close.y + close.h / 2.0};
    canvas.Fill(Shape(close, close.w / 2.0), Rgb(0x000000, 0.07));
    canvas.Stroke({m.x - 3.5, m.y - 3.5}, {m.x + 3.5, m.y + 3.5}, 1.8, kTitle);
    canvas.Stroke({m.x - 3.5, m.y + 3.5}, {m.x + 3.5, m.y - 3.5}, 1.8, kTitle);
    using Draw = void (*)(CCanvas&, const SwitchPlace&, const PanelView&);
    const Draw kDraw[] = {DrawToggle, DrawButton, DrawButton, DrawSlider};
    for (const SwitchPlace& place : view.column.switches) {
        kDraw[static_cast<int>(place.row->kind)](canvas, place, view);
    }
    if (!view.focus) return;
    const Box focused = BoxOfPlace(view.column, view.phone.close, *view.focus);
    canvas.Outline(Shape(focused, 8).Inset(-kFocusGap), kFocusLine, kInk, kInk);
}

void DrawColumnTexts(HDC dc, const PanelView& view) {
    for (const TitlePlace& title : view.column.titles) {
        DrawTextMark(dc, {title.box.x, title.box.y + 7, title.group->title, 10, FW_BOLD, kTitle,
                          TextAnchor::kLeft, false, 1});
    }
    for (const SwitchPlace& place : view.column.switches) DrawLabel(dc, place, view);
}

}  // namespace panel
