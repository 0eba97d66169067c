// The hit test over the sliders.
#include <algorithm>

#include "skin/hit_test.h"
#include "skin/skin_rows.h"

namespace {

// The slider seen along its axis.
struct Axis {
    int point, start, thumb, farthest;
};

Axis AxisOf(const SkinSlider& slider, int x, int y) {
    const SkinSliderPlace& place = PlaceOf(slider);
    if (slider.nOrientation == kSliderHorizontal)
        return {x, place.track.x, place.cxThumb, FarthestPos(slider)};
    return {y, place.track.y, place.cyThumb, FarthestPos(slider)};
}

// The position that puts the thumb's middle under the point, as far as the track reaches.
int PosFromPoint(const Axis& axis) {
    return std::clamp(axis.point - axis.thumb / 2 - axis.start, 0, axis.farthest);
}

bool InTrack(const SkinSlider& slider, int x, int y) {
    const SkinRect& track = PlaceOf(slider).track;
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
    for (; *index < skin.nSliders; ++*index) {
        SkinSlider& slider = skin.pSliders[*index];
        const Axis axis = AxisOf(slider, x, y);
        const bool hit =
            InTrack(slider, x, y) ? TouchInside(slider, axis, message) : TouchOutside(slider, axis, message);
        if (hit) return slider.nId;
    }
    return kNoHit;
}
