// Linear searches over the skin's tables.
#include "skin/skin_rows.h"

namespace {

template <typename Row>
Row* FindRow(Row* rows, int count, int Row::*key, int value) {
    if (rows == nullptr) return nullptr;
    for (Row* row = rows; row != rows + count; ++row) {
        if (row->*key == value) return row;
    }
    return nullptr;
}

}  // namespace

SkinButton* FindButton(const CSkin& skin, int id) {
    return FindRow(skin.pButtons, skin.nButtons, &SkinButton::nId, id);
}

SkinSlider* FindSlider(const CSkin& skin, int id) {
    return FindRow(skin.pSliders, skin.nSliders, &SkinSlider::nId, id);
}

const SkinText* FindText(const CSkin& skin, int id) {
    return FindRow(skin.pTexts, skin.nTexts, &SkinText::nId, id);
}

HBITMAP BitmapOf(const CSkin& skin, const SkinScreen& screen, int index) {
    const SkinBitmap* row = FindRow(skin.pBitmaps, skin.nBitmaps, &SkinBitmap::nIndex, index);
    if (row == nullptr) return nullptr;
    return screen.bPortrait ? row->hPortrait : row->hLandscape;
}

int FarthestPos(const SkinSlider& slider, const SkinScreen& screen) {
    const SkinSliderPlace& place = PlaceOf(slider, screen);
    if (slider.nOrientation == kSliderHorizontal) return place.track.cx - place.cxThumb;
    return place.track.cy - place.cyThumb;
}
