// Which text fields still show what was painted into them last, so that a text that has not changed need not
// be painted again. Every paint says here which rectangle it has painted over, after it has done so. Any
// thread; no lock, as a worker thread may be suspended anywhere.
#pragma once

#include "skin/screen.h"
#include "skin/skin.h"

// Something was painted there: no field shows its text there any longer.
void MarkPaintedOver(CSkin& skin, const SkinScreen& screen, const SkinRect& rect);

// The monitor has painted this field. Where its fields overlap, a later row of the table lies above an
// earlier one: it has to be painted again after it, but not the other way round, or the two would be painted
// by turns for ever.
void MarkFieldShown(CSkin& skin, const SkinScreen& screen, const SkinText& field);

// True when the field shows that text in that window, and nothing was painted over it since.
[[nodiscard]] bool ShowsText(const SkinShownText& shown, HWND window, const WCHAR* text);
