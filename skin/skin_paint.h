// Painting of the main screen: background, text fields, slider, buttons and the two indicators. Every paint
// makes what it needs and frees it again. An element that is not in its table, or whose image is missing, is
// left as it is.
//
// DrawSkinText, DrawScanProgress, DrawDial and DrawSignal may be called from any thread, several at a time:
// they only read the tables, paint on pictures of their own and copy these to skin.hWnd in one step; the
// background that all share is copied without a lock (skin/bitmap_source.h). The others change rows and
// belong to the thread of the window.
#pragma once

#include "skin/skin.h"

// Copies the orientation's background to the whole screen.
void DrawBackground(CSkin& skin, HDC hdc);

// Paints one text field anew, over the background. `text` is not null; "" clears the field. Nothing happens
// while the window is minimised.
void DrawSkinText(CSkin& skin, int fieldId, const WCHAR* text);
// The same, unless the field shows that text already: ShowSkinText painted it last, and nothing was painted
// over it since. Each field by one thread at a time: the monitor, or the one of a recording's time.
void ShowSkinText(CSkin& skin, int fieldId, const WCHAR* text);

// Paint every row (`all` = TRUE) or the one with that id.
void DrawSlider(CSkin& skin, HDC hdc, BOOL all, int id);
void DrawButtons(CSkin& skin, HDC hdc, BOOL all, int id);

// The bar and the percentage of a scan; `level` is 0 to 10, in tenths of the band. Other levels do nothing.
void DrawScanProgress(CSkin& skin, int level);

// The dial of a wide screen, with its needle at `channel` (10 kHz; outside the band at its end) and two texts
// in its middle, none of them null: the frequency without its unit, and the channel's name. On other screens
// there is none.
void DrawDial(const CSkin& skin, std::uint32_t channel, const WCHAR* frequency, const WCHAR* name);

// The antenna's bars for a signal level as the receiver gives it. By one thread at a time, the monitor's.
void DrawSignal(CSkin& skin, int value);
// False when something was painted over them since, or they never were. For that thread.
[[nodiscard]] bool SignalIsShown(const CSkin& skin);
