// Finding a row of the skin's tables, and the half of it that holds for the screen as it stands now.
#pragma once

#include "skin/skin.h"

// The row with this id, by linear search; null when there is none. A table may be empty or missing.
[[nodiscard]] SkinButton* FindButton(const CSkin& skin, int id);
[[nodiscard]] SkinSlider* FindSlider(const CSkin& skin, int id);
[[nodiscard]] const SkinText* FindText(const CSkin& skin, int id);

// The bitmap of that index for the current orientation; null when it is not loaded.
[[nodiscard]] HBITMAP BitmapOf(const CSkin& skin, int index);

// Where the element lies in the current orientation.
[[nodiscard]] const SkinButtonPlace& PlaceOf(const SkinButton& button);
[[nodiscard]] const SkinSliderPlace& PlaceOf(const SkinSlider& slider);
[[nodiscard]] const SkinRect& PlaceOf(const SkinText& text);

// The farthest position of the thumb: length of the track less that of the thumb, along the slider's axis.
[[nodiscard]] int FarthestPos(const SkinSlider& slider);
