// The hit test over the sliders.
#include <algorithm>

#include "skin/hit_test.h"
#include "skin/skin_rows.h"

namespace {

// The slider seen along its axis.
struct Axis {
    int point, start, thumb, farthest;
};

Axis AxisOf(const SkinSlider& slider, const SkinScreen& screen, int x, int y) {
    const SkinSliderPlace& place = PlaceOf(slider, screen);
    if (slider.nOrientation == kSliderHorizontal)
        return {x, place.track.x, place.cxThumb, FarthestPos(slider, screen)};
    return {y, place.track.y, place.cyThumb, FarthestPos(slider, screen)};
}

// The position that puts the thumb's middle under the point, as far as the track reaches.
int PosFromPoint(const Axis& axis) {
    return std::clamp(axis.point - axis.thumb / 2 - axis.start, 0, axis.farthest);
}

bool InTrack(const SkinRect& track, int x, int y) {
    const RECT bounds = {track.x, track.y, track.x + track.cx, track.y + track.cy};
    return PtInRect(&bounds, POINT{x, y}) != FALSE;
}

// Each returns false when the message does not concern the slider.
bool TouchInside(SkinSlider& slider, const Axis& axis, UINT message) {
    if (!IsStylusMessage(message)) return true;
    const bool pressed = (slider.dwLook & kLookPressed) != 0;
    if (message != WM_LBUTTONDOWN && !pressed) return false;
    slider.nPos = PosFromPoint(axis);
    if (message == WM_LBUTTONDOWN) slider.dwLook = kLookPressed;
    if (message == WM_MOUSEMOVE) slider.dwLook = kLookDragging;
    if (message == WM_LBUTTONUP) slider.dwLook = kLookReleased;
    return true;
}

bool TouchOutside(SkinSlider& slider, const Axis& axis, UINT message) {
    if (!IsStylusMessage(message)) return false;
    if ((slider.dwLook & kLookDragging) == 0) return false;
    if (message == WM_LBUTTONUP) slider.dwLook = kLookReleased;
    if (message == WM_MOUSEMOVE) slider.nPos = PosFromPoint(axis);
    return true;
}

}  // namespace

int HitTestSlider(CSkin& skin, int x, int y, UINT message, int* index) {
    *index = 0;
    if (skin.pSliders == nullptr) return kNoHit;
    const SkinScreen screen = CurrentScreen();
    for (; *index < skin.nSliders; ++*index) {
        SkinSlider& slider = skin.pSliders[*index];
        const Axis axis = AxisOf(slider, screen, x, y);
        const bool inside = InTrack(PlaceOf(slider, screen).track, x, y);
        const bool hit = inside ? TouchInside(slider, axis, message) : TouchOutside(slider, axis, message);
        if (hit) return slider.nId;
    }
    return kNoHit;
}
