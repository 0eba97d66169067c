// The hit test over the buttons.
#include "skin/hit_test.h"
#include "skin/skin_rows.h"

namespace {

bool Contains(const SkinRect& rect, int x, int y) {
    const RECT bounds = {rect.x, rect.y, rect.x + rect.cx, rect.y + rect.cy};
    return PtInRect(&bounds, POINT{x, y}) != FALSE;
}

bool Repeats(const SkinButton& button) {
    return (button.dwKind & kButtonRepeats) != 0;
}

void StartRepeat(const CSkin& skin, const SkinButton& button) {
    if (Repeats(button)) SetTimer(skin.hWnd, static_cast<UINT_PTR>(button.nId), kRepeatPeriod_ms, nullptr);
}

void StopRepeat(const CSkin& skin, const SkinButton& button) {
    if (Repeats(button)) KillTimer(skin.hWnd, static_cast<UINT_PTR>(button.nId));
}

// `step` is 1 or -1; the frames run in a ring.
void StepFrame(SkinButton& button, int step) {
    if ((button.dwKind & kButtonHasStates) == 0 || button.nFrames < 1) return;
    button.nFrame = (button.nFrame + step + button.nFrames) % button.nFrames;
}

void Press(const CSkin& skin, SkinButton& button) {
    StartRepeat(skin, button);
    StepFrame(button, 1);
    button.dwLook = kLookPressed;
}

void Lift(const CSkin& skin, SkinButton& button) {
    StopRepeat(skin, button);
    StepFrame(button, 1);
    button.dwLook = kLookReleased;
}

// Kept: a move over a button that was pressed in place marks it as slid onto as well, and sliding onto a
// button with states shows its frame as it stands, although leaving it steps one frame back.
void SlideOnto(const CSkin& skin, SkinButton& button) {
    if (button.dwLook == kLookReleased) StartRepeat(skin, button);
    button.dwLook = kLookPressed | kLookSlidOnto;
}

void Leave(const CSkin& skin, SkinButton& button) {
    StopRepeat(skin, button);
    StepFrame(button, -1);
    button.dwLook = kLookReleased;
}

struct StylusAction {
    UINT uMessage;
    void (*action)(const CSkin& skin, SkinButton& button);
};

constexpr StylusAction kStylusActions[] = {
    {WM_LBUTTONDOWN, Press},
    {WM_LBUTTONUP, Lift},
    {WM_MOUSEMOVE, SlideOnto},
};

void Touch(const CSkin& skin, SkinButton& button, UINT message) {
    for (const StylusAction& row : kStylusActions) {
        if (row.uMessage == message) row.action(skin, button);
    }
}

}  // namespace

bool IsStylusMessage(UINT message) {
    return message == WM_MOUSEMOVE || message == WM_LBUTTONDOWN || message == WM_LBUTTONUP;
}

int HitTestButtons(CSkin& skin, int x, int y, UINT message, int* index) {
    *index = 0;
    if (skin.pButtons == nullptr) return kNoHit;
    const SkinScreen screen = CurrentScreen();
    for (; *index < skin.nButtons; ++*index) {
        SkinButton& button = skin.pButtons[*index];
        if ((button.dwLook & kLookDisabled) != 0) continue;
        if (Contains(PlaceOf(button, screen).rect, x, y)) {
            Touch(skin, button, message);
            return button.nId;
        }
        // A held button is let go before a later one is looked at, even when the point lies in that one.
        const bool held = (button.dwLook & (kLookPressed | kLookSlidOnto)) != 0;
        if (held && IsStylusMessage(message)) {
            Leave(skin, button);
            return button.nId;
        }
    }
    return kNoHit;
}
