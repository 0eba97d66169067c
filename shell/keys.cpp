#include "shell/keys.h"

#include "shell/display_power.h"
#include "shell/main_state.h"
#include "tuner/digit_entry.h"
#include "tuner/volume_keys.h"

namespace {

constexpr int kVolumeKeyStep = 5;

void DigitKey(CMainState& state, HWND window, WPARAM key) {
    OnDigitKey(state, window, key);
}
void FocusList(CMainState& state, HWND, WPARAM) {
    SetFocus(state.m_hListView);
}
void VolumeDown(CMainState& state, HWND window, WPARAM) {
    StepVolume(window, state, -kVolumeKeyStep);
}
void VolumeUp(CMainState& state, HWND window, WPARAM) {
    StepVolume(window, state, kVolumeKeyStep);
}
void ToggleKey(CMainState& state, HWND, WPARAM) {
    ToggleDisplay(state);
}

struct KeyRow {
    WPARAM first, last;
    void (*handler)(CMainState&, HWND, WPARAM);
};

// clang-format off
constexpr KeyRow kKeys[] = {
    {'0',       '9',       DigitKey},
    {VK_UP,     VK_UP,     FocusList},
    {VK_DOWN,   VK_DOWN,   FocusList},
    {VK_LEFT,   VK_LEFT,   VolumeDown},
    {VK_RIGHT,  VK_RIGHT,  VolumeUp},
    {VK_RETURN, VK_RETURN, ToggleKey},
};
// clang-format on

}  // namespace

bool KeyPasses(const CMainState& state, WPARAM virtualKey) {
    if (state.m_bRecording) return false;
    // Return is always let through: with the display dark the gate passes it, with the display on it switches
    // the display off.
    return ScreenGate(virtualKey) || virtualKey == VK_RETURN;
}

void HandleKeyDown(CMainState& state, HWND window, WPARAM virtualKey) {
    NKDbgPrintfW(L"FM: ui.cpp: WndProc: WM_KEYDOWN\n");
    if (!KeyPasses(state, virtualKey)) return;
    for (const KeyRow& row : kKeys) {
        if (row.first <= virtualKey && virtualKey <= row.last) row.handler(state, window, virtualKey);
    }
}
