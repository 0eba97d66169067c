// The computer's keys on the panel: the phone's keys that the radio's window does not know, and the panel's
// switches.
#include <algorithm>
#include <cstdint>

#include "handset/base/rows.h"
#include "handset/controls/radio_windows.h"
#include "handset/controls/switches.h"
#include "handset/phone/panel_focus.h"
#include "handset/phone/panel_window.h"
#include "handset/phone/phone_keys.h"
#include "handset/state/own_windows.h"

namespace panel {
namespace {

constexpr WORD kPanelKey = VK_F6;  // goes to the switches and back, as it goes from pane to pane elsewhere
constexpr int kMove = 16;          // pixels
constexpr std::uint32_t kLevelStep = 5, kFullLevel = 100;

// How a key travels from the hook, which has to answer at once, to the window, in lParam.
constexpr LPARAM kDown = 1, kShift = 2, kControl = 4;

}  // namespace

struct CPanelWindow::FocusKey {
    WORD virtualKey;
    void (CPanelWindow::*act)(const ComputerKey& key);
};

const CPanelWindow::FocusKey* CPanelWindow::FocusKeyFor(WORD virtualKey) {
    static constexpr FocusKey kKeys[] = {
        {VK_TAB, &CPanelWindow::WalkOn},          {VK_DOWN, &CPanelWindow::MoveOrWalk},
        {VK_UP, &CPanelWindow::MoveOrWalk},       {VK_LEFT, &CPanelWindow::MoveOrSlide},
        {VK_RIGHT, &CPanelWindow::MoveOrSlide},   {VK_SPACE, &CPanelWindow::PressFocused},
        {VK_RETURN, &CPanelWindow::PressFocused}, {VK_ESCAPE, &CPanelWindow::LeaveSwitches},
    };
    return handset::RowWith(kKeys, &FocusKey::virtualKey, virtualKey);
}

// Keys of other programs' windows are theirs.
bool CPanelWindow::WantsKey(const ComputerKey& key) const {
    // What was pressed here is let go here.
    if (!key.down) return heldKeys_.test(key.virtualKey);
    if (key.other) return false;
    const HWND front = GetForegroundWindow();
    if (front == nullptr || !handset::IsOwnWindow(front)) return false;
    const bool plain = !key.shift && !key.control;
    if (KeyOfComputer(key.virtualKey) || key.virtualKey == kPanelKey) return plain;
    return onSwitches_ && FocusKeyFor(key.virtualKey) != nullptr;
}

bool CPanelWindow::TakeKey(const ComputerKey& key) {
    if (!WantsKey(key)) return false;
    const bool again = key.down && heldKeys_.test(key.virtualKey);
    heldKeys_.set(key.virtualKey, key.down);
    // Held, a key of the phone is held as well; the arrows go on.
    if (again && (KeyOfComputer(key.virtualKey) || key.virtualKey == kPanelKey)) return true;
    if (key.down && key.virtualKey == kPanelKey) onSwitches_ = !onSwitches_;
    if (key.down && key.virtualKey == VK_ESCAPE) onSwitches_ = false;
    const LPARAM with = (key.down ? kDown : 0) | (key.shift ? kShift : 0) | (key.control ? kControl : 0);
    PostMessageW(window_, kKeyMessage, key.virtualKey, with);
    return true;
}

LRESULT CPanelWindow::OnComputerKey(WPARAM virtualKey, LPARAM with) {
    const ComputerKey key = {static_cast<WORD>(virtualKey), (with & kDown) != 0, (with & kShift) != 0,
                             (with & kControl) != 0, false};
    if (const auto phoneKey = KeyOfComputer(key.virtualKey)) {
        view_.pressedKey = key.down ? phoneKey : std::nullopt;
        PressPhoneKey(*phoneKey, key.down);
    } else if (key.down && key.virtualKey == kPanelKey) {
        view_.focus = view_.focus ? std::nullopt : std::optional(lastFocus_);
    } else if (const FocusKey* row = FocusKeyFor(key.virtualKey); key.down && row != nullptr && view_.focus) {
        (this->*row->act)(key);
    }
    Redraw();
    return 0;
}

void CPanelWindow::WalkOn(const ComputerKey& key) {
    const bool back = key.shift || key.virtualKey == VK_UP || key.virtualKey == VK_LEFT;
    view_.focus = (back ? PreviousPlace : NextPlace)(view_.column, *view_.focus);
    lastFocus_ = *view_.focus;
}

void CPanelWindow::MoveOrWalk(const ComputerKey& key) {
    if (!key.control) return WalkOn(key);
    MovePanel(0, key.virtualKey == VK_UP ? -kMove : kMove);
}

void CPanelWindow::MoveOrSlide(const ComputerKey& key) {
    const bool left = key.virtualKey == VK_LEFT;
    const SwitchRow* row = SwitchAtPlace(view_.column, *view_.focus);
    if (key.control) return MovePanel(left ? -kMove : kMove, 0);
    if (row == nullptr || row->kind != SwitchKind::kSlider) return WalkOn(key);
    const std::uint32_t level = std::min(view_.now.signalLimit, kFullLevel);
    const std::uint32_t next = left ? level - std::min(level, kLevelStep) : level + kLevelStep;
    SetSignalLimit(next < kFullLevel ? std::optional(ReceptionLimit{next, TunedChannel()}) : std::nullopt);
    Refresh();
}

void CPanelWindow::PressFocused(const ComputerKey&) {
    const SwitchRow* row = SwitchAtPlace(view_.column, *view_.focus);
    if (row == nullptr) return PutAway();
    // As things stand now, not as they stood when they were drawn.
    Refresh();
    if (row->press != nullptr) row->press(view_.now);
    Refresh();
}

void CPanelWindow::LeaveSwitches(const ComputerKey&) {
    view_.focus.reset();
}

void CPanelWindow::MovePanel(int dx, int dy) {
    RECT place = {};
    GetWindowRect(window_, &place);
    SetWindowPos(window_, nullptr, place.left + dx, place.top + dy, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    KeepOnScreen();
    KeepPlace();
}

// The radio's window took the keys along when it went, and with it the way back to the switch that starts the
// radio.
void CPanelWindow::HoldKeyboard(bool radioBefore) {
    if (view_.focus && radioBefore && !view_.now.radio) SetForegroundWindow(window_);
}

}  // namespace panel
