#include "handset/phone/panel_hints.h"

#include <commctrl.h>

#include "handset/phone/phone_keys.h"

namespace panel {
namespace {

constexpr wchar_t kCloseHint[] = L"Puts the phone away and closes the radio.";
constexpr wchar_t kBandHint[] = L"The band as it was last looked at. A click tunes the radio there.";

TTTOOLINFOW Tool(HWND panel, UINT_PTR number) {
    TTTOOLINFOW tool = {};
    // What every version of the control takes.
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.uFlags = TTF_SUBCLASS;
    tool.hwnd = panel;
    tool.uId = number;
    return tool;
}

HWND MakeTips(HWND panel) {
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    // The panel is never the active window, so its hints come also while another one is.
    return CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE, TOOLTIPS_CLASSW, nullptr,
                           WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, panel, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

}  // namespace

void CPanelHints::Fit(HWND panel, const PanelView& view) {
    if (tips_ == nullptr) tips_ = MakeTips(panel);
    if (tips_ == nullptr) return;
    for (; count_ > 0; --count_) {
        TTTOOLINFOW tool = Tool(panel, count_);
        SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    for (const SwitchPlace& place : view.column.switches) Add(panel, place.box, place.row->hint);
    for (const KeyPlace& place : view.phone.keys) Add(panel, place.box, RowOf(place.key).hint);
    Add(panel, view.phone.band, kBandHint);
    Add(panel, view.phone.close, kCloseHint);
}

void CPanelHints::Add(HWND panel, const Box& box, const wchar_t* text) {
    TTTOOLINFOW tool = Tool(panel, ++count_);
    tool.rect = {box.x, box.y, box.Right(), box.Bottom()};
    tool.lpszText = const_cast<wchar_t*>(text);
    SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace panel
