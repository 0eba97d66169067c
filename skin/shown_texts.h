// Which text fields, and whether the signal's bars, still show what was painted there last, so that what has
// not changed need not be painted again. Every paint says here which rectangle it has painted over, after it
// has done so. Any thread; no lock, as a worker thread may be suspended anywhere.
#pragma once

#include "skin/screen.h"
#include "skin/skin.h"

// Where the signal's bars lie.
[[nodiscard]] const SkinRect& SignalPlace(const SkinScreen& screen);

// Something was painted there: neither a field nor the signal is shown there any longer.
void MarkPaintedOver(CSkin& skin, const SkinScreen& screen, const SkinRect& rect);

// The monitor has painted this field. Where its fields overlap, a later row of the table lies above an
// earlier one: it has to be painted again after it, but not the other way round, or the two would be painted
// by turns for ever.
void MarkFieldShown(CSkin& skin, const SkinScreen& screen, const SkinText& field);

// The paint that began when the count was `before` is done. One paint more is this one; with any other in
// between, or with none, it has to be painted again next time.
void MarkShown(SkinShown& shown, std::uint32_t before, HWND window);
// True when it was painted in that window, and nothing over it since.
[[nodiscard]] bool IsShown(const SkinShown& shown, HWND window);
// The same, and it was that text.
[[nodiscard]] bool ShowsText(const SkinShownText& shown, HWND window, const WCHAR* text);
