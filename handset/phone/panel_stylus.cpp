// The stylus on the panel: keys, switches, the slider, the band and the panel itself.
#include <windowsx.h>

#include "handset/controls/radio_windows.h"
#include "handset/controls/switches.h"
#include "handset/phone/panel_window.h"
#include "handset/phone/phone_keys.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

constexpr UINT_PTR kRepeatTimer = 2;
constexpr UINT kFirstRepeat_ms = 400;
constexpr UINT kRepeatPeriod_ms = 80;

bool Repeats(PhoneKey key) {
    return key == PhoneKey::kUp || key == PhoneKey::kDown || key == PhoneKey::kLeft ||
           key == PhoneKey::kRight;
}

}  // namespace

LRESULT CPanelWindow::OnPress(WPARAM, LPARAM lParam) {
    const int x = GET_X_LPARAM(lParam);
    const int y = GET_Y_LPARAM(lParam);
    SetCapture(window_);
    // Otherwise the radio has the keys of the computer, also one that came since the panel looked last.
    if (RadioMainWindow() == nullptr) SetForegroundWindow(window_);
    view_.pressedKey = KeyAt(view_.phone, x, y);
    if (view_.pressedKey) {
        PressPhoneKey(*view_.pressedKey, true);
        if (Repeats(*view_.pressedKey)) SetTimer(window_, kRepeatTimer, kFirstRepeat_ms, nullptr);
    } else if (const SwitchPlace* place = SwitchAt(view_.column, x, y)) {
        view_.pressedSwitch = place->row;
        // The station that is tuned now is the one to be weakened, even if the radio leaves it for another.
        weakened_ = TunedChannel();
        if (place->row->kind == SwitchKind::kSlider) DragSlider(x);
    } else if (view_.phone.close.Contains(x, y)) {
        closing_ = true;
    } else if (view_.phone.band.Contains(x, y)) {
        tuning_ = true;
    } else {
        grip_ = POINT{x, y};
    }
    Redraw();
    return 0;
}

LRESULT CPanelWindow::OnStylusMove(WPARAM, LPARAM lParam) {
    if (view_.pressedSwitch != nullptr && view_.pressedSwitch->kind == SwitchKind::kSlider) {
        DragSlider(GET_X_LPARAM(lParam));
    }
    if (grip_) DragPanel(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    return 0;
}

LRESULT CPanelWindow::OnLetGo(WPARAM, LPARAM lParam) {
    const SwitchRow* row = view_.pressedSwitch;
    const SwitchPlace* place = SwitchAt(view_.column, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    const bool close = closing_ && view_.phone.close.Contains(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    const bool tune = tuning_;
    if (grip_) KeepPlace();
    ReleaseCapture();
    if (close) {
        PutAway();
        return 0;
    }
    // Let go beside the switch: nothing was meant.
    if (row != nullptr && row->press != nullptr && place != nullptr && place->row == row)
        row->press(view_.now);
    if (tune) TuneAt(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    Refresh();
    return 0;
}

LRESULT CPanelWindow::OnCaptureLost(WPARAM, LPARAM) {
    ReleaseKey();
    view_.pressedSwitch = nullptr;
    grip_.reset();
    closing_ = false;
    tuning_ = false;
    Redraw();
    return 0;
}

void CPanelWindow::ReleaseKey() {
    KillTimer(window_, kRepeatTimer);
    if (!view_.pressedKey) return;
    const PhoneKey key = *view_.pressedKey;
    view_.pressedKey.reset();
    PressPhoneKey(key, false);
}

void CPanelWindow::PutAway() {
    putAway_ = true;
    PostMessageW(window_, WM_CLOSE, 0, 0);
}

void CPanelWindow::DragSlider(int x) {
    for (const SwitchPlace& place : view_.column.switches) {
        if (place.row != view_.pressedSwitch) continue;
        const auto level = SliderLevelAt(place.box, x);
        SetSignalLimit(level ? std::optional(ReceptionLimit{*level, weakened_}) : std::nullopt);
    }
    Refresh();
}

// Not by the system's own dragging, which would activate the window. The point is the message's: where the
// pointer stands by now is another process's to say, and may not have arrived.
void CPanelWindow::DragPanel(int x, int y) {
    RECT place = {};
    GetWindowRect(window_, &place);
    SetWindowPos(window_, nullptr, place.left + x - grip_->x, place.top + y - grip_->y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// For the next time that the phone is opened.
void CPanelWindow::KeepPlace() const {
    RECT place = {};
    GetWindowRect(window_, &place);
    handset::SetStateQword(kPlaceX, static_cast<std::uint64_t>(place.left));
    handset::SetStateQword(kPlaceY, static_cast<std::uint64_t>(place.top));
}

// By the digits that a user would type; who takes no keys is not tuned.
void CPanelWindow::TuneAt(int x, int y) {
    const auto channel = BandChannelAt(view_.phone.band, view_.band, x, y);
    if (!channel) return;
    for (const PhoneKey key : DigitsOf(*channel)) {
        if (!PressPhoneKey(key, true)) return;
        PressPhoneKey(key, false);
    }
}

void CPanelWindow::RepeatKey() {
    if (!view_.pressedKey) return;
    PressPhoneKey(*view_.pressedKey, true);
    SetTimer(window_, kRepeatTimer, kRepeatPeriod_ms, nullptr);
}

}  // namespace panel
