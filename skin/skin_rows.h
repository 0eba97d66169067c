// Finding a row of the skin's tables, and the half of it that holds for a screen.
#pragma once

#include "skin/screen.h"
#include "skin/skin.h"

// The row with this id, by linear search; null when there is none. A table may be empty or missing.
[[nodiscard]] SkinButton* FindButton(const CSkin& skin, int id);
[[nodiscard]] SkinSlider* FindSlider(const CSkin& skin, int id);
[[nodiscard]] const SkinText* FindText(const CSkin& skin, int id);

// The bitmap of that index for the screen's orientation; null when it is not loaded.
[[nodiscard]] HBITMAP BitmapOf(const CSkin& skin, const SkinScreen& screen, int index);

// Where the element lies on such a screen: any row with a portrait and a landscape placement.
template <typename Row>
[[nodiscard]] auto& PlaceOf(const Row& row, const SkinScreen& screen) {
    return screen.bPortrait ? row.portrait : row.landscape;
}

// The farthest position of the thumb: length of the track less that of the thumb, along the slider's axis.
[[nodiscard]] int FarthestPos(const SkinSlider& slider, const SkinScreen& screen);
