// The slider: its track is part of the background, its thumb moves over it.
#include "shell/owned.h"
#include "skin/paint_steps.h"
#include "skin/shown_texts.h"
#include "skin/skin_paint.h"
#include "skin/skin_rows.h"

namespace {

constexpr COLORREF kFilledTrack = 0x001FC28D;  // light green
constexpr int kFilledTrackPen = 3;
constexpr int kFilledTrackY = 12;  // below the track's upper edge

// Kept: the pen is 3 pixels thick, so its lowest row lies just below the track, where painting the slider
// does not erase it: a volume that was lowered leaves a thin line behind until the whole screen is painted.
void DrawFilledTrack(HDC hdc, const SkinRect& track, int pos) {
    const OwnedPen pen(CreatePen(PS_SOLID, kFilledTrackPen, kFilledTrack));
    const SelectObjectGuard selected(hdc, pen.get());
    MoveToEx(hdc, track.x, track.y + kFilledTrackY, nullptr);
    LineTo(hdc, track.x + pos, track.y + kFilledTrackY);
}

void DrawOneSlider(const BitmapSource& source, HDC hdc, const SkinSlider& slider) {
    const SkinSliderPlace& place = PlaceOf(slider, source.Screen());
    const SkinRect& track = place.track;
    source.RestoreBackground(hdc, track);

    const bool horizontal = slider.nOrientation == kSliderHorizontal;
    const int x = track.x + (horizontal ? slider.nPos : 0);
    const int y = track.y + (horizontal ? 0 : slider.nPos);
    const int xFrame = (slider.dwLook & kLookPressed) != 0 ? place.cxThumb : 0;
    const HBITMAP thumb = source.BitmapAt(kBitmapThumb);
    if (thumb != nullptr) {
        TransparentImage(hdc, x, y, place.cxThumb, place.cyThumb, thumb, xFrame, 0, place.cxThumb,
                         place.cyThumb, kTransparentColour);
    }
    if (source.Screen().bWide) DrawFilledTrack(hdc, track, slider.nPos);
}

}  // namespace

void PaintSliders(CSkin& skin, const BitmapSource& source, HDC hdc, BOOL all, int id) {
    if (skin.pSliders == nullptr) return;
    for (int i = 0; i < skin.nSliders; ++i) {
        const SkinSlider& slider = skin.pSliders[i];
        if (!all && slider.nId != id) continue;
        DrawOneSlider(source, hdc, slider);
        MarkPaintedOver(skin, source.Screen(), PlaceOf(slider, source.Screen()).track);
    }
}

void DrawSlider(CSkin& skin, HDC hdc, BOOL all, int id) {
    PaintSliders(skin, BitmapSource(skin, hdc), hdc, all, id);
}
