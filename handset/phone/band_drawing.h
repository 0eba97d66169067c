// The strip of the band, drawn.
#pragma once

#include <windows.h>

#include <string>

#include "handset/phone/band_strip.h"
#include "handset/phone/canvas.h"

namespace panel {

// First shapes, then texts, as with the rest of the panel.
void DrawBandShapes(CCanvas& canvas, const Box& strip, const BandShown& shown);
void DrawBandTexts(HDC dc, const Box& strip, const BandShown& shown);

// The strip alone as a PNG file's bytes; empty when the system has no bitmap for it.
std::string BandPng(const BandShown& shown);

}  // namespace panel
