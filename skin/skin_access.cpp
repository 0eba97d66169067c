// The elements' accessors.
#include "skin/skin_access.h"

#include "skin/skin_rows.h"

namespace {

SkinButton* FindButtonWithStates(const CSkin& skin, int id) {
    SkinButton* button = FindButton(skin, id);
    return button != nullptr && (button->dwKind & kButtonHasStates) != 0 ? button : nullptr;
}

}  // namespace

void EnableButton(CSkin& skin, int id, int disable) {
    SkinButton* button = FindButton(skin, id);
    if (button == nullptr) return;
    if (disable == 1) {
        button->dwLook |= kLookDisabled;
    } else {
        // Kept: "enable" turns the bit over, so a button that is enabled already becomes disabled.
        button->dwLook ^= kLookDisabled;
    }
    const SkinRect& place = PlaceOf(*button, CurrentScreen()).rect;
    const RECT rect = {place.x, place.y, place.x + place.cx, place.y + place.cy};
    InvalidateRect(skin.hWnd, &rect, TRUE);
}

bool IsButtonEnabled(const CSkin& skin, int id) {
    const SkinButton* button = FindButton(skin, id);
    return button != nullptr && (button->dwLook & kLookDisabled) == 0;
}

void SetButtonFrame(CSkin& skin, int id, int frame) {
    SkinButton* button = FindButtonWithStates(skin, id);
    if (button == nullptr || frame < 0 || frame >= button->nFrames) return;
    button->nFrame = frame;
}

int GetButtonFrame(const CSkin& skin, int id, int* frame) {
    *frame = 0;
    if (id < 0) return 0;
    const SkinButton* button = FindButtonWithStates(skin, id);
    if (button == nullptr) return 0;
    *frame = button->nFrame;
    return 1;
}

int GetSliderPos(const CSkin& skin, int id) {
    if (id < 0) return 0;
    const SkinSlider* slider = FindSlider(skin, id);
    return slider == nullptr ? 0 : slider->nPos;
}

int GetSliderMax(const CSkin& skin, int id) {
    const SkinSlider* slider = FindSlider(skin, id);
    return slider == nullptr ? 0 : FarthestPos(*slider, CurrentScreen());
}

int SetSliderPos(CSkin& skin, int id, int pos) {
    if (id < 0 || pos < 0 || pos > GetSliderMax(skin, id)) return 0;
    SkinSlider* slider = FindSlider(skin, id);
    if (slider == nullptr) return 0;
    slider->nPos = pos;
    return 1;
}
