// The main screen's layout as the tests know it: their own copy of the tables, so that a wrong row shows.
#pragma once

#include <windows.h>

#include "skin/skin_tables.h"

struct Screen {
    const char* name;
    int cx, cy;
    bool portrait, wide;
};

inline constexpr Screen kPortrait = {"Portrait", 240, 320, true, false};
inline constexpr Screen kLandscape = {"Landscape", 320, 240, false, false};
inline constexpr Screen kWidePortrait = {"WidePortrait", 480, 640, true, true};
inline constexpr Screen kWideLandscape = {"WideLandscape", 640, 480, false, true};
inline constexpr Screen kScreens[] = {kPortrait, kLandscape, kWidePortrait, kWideLandscape};

struct TextLayout {
    int id;
    SkinRect portrait, landscape;
    UINT format;
    COLORREF colour;
    LONG width, height, weight;
    SkinRect At(const Screen& screen) const { return screen.portrait ? portrait : landscape; }
};

struct ButtonLayout {
    int id;
    int kind;  // 1 repeats, 2 has states, 0 neither
    SkinRect portrait, landscape;
    int bitmap, xPortrait, xLandscape;  // source of the pressed image; y is 0
    int xDisabledPortrait, xDisabledLandscape;
    SkinRect At(const Screen& screen) const { return screen.portrait ? portrait : landscape; }
    int xPressed(const Screen& screen) const { return screen.portrait ? xPortrait : xLandscape; }
    int xDisabled(const Screen& screen) const {
        return screen.portrait ? xDisabledPortrait : xDisabledLandscape;
    }
};

// clang-format off
inline constexpr TextLayout kTextLayout[] = {
    {211, {123,  30, 117, 35}, {150, 10, 120, 25}, 0x0,     0xFFFFFF,  0,  0, 700},
    {222, {  0,  28, 118, 25}, { 35,  8, 110, 25}, 0x40002, 0xFFFFFF,  0, 22, 800},
    {212, {143,  52,  95, 18}, {238, 15,  78, 18}, 0x2,     0xAFFFFF,  0, 15, 400},
    {213, {  5,  22, 230, 14}, {  5, 22, 230, 14}, 0x1,     0xFFFFFF,  0,  0, 400},
    {216, {120,   0, 115, 20}, {235,  0,  80, 18}, 0x2,     0xFFFFFF,  0, 12, 400},
    {215, {  2,  86, 235, 40}, {  5, 50, 310, 40}, 0x11,    0xFFFFFF,  0, 12, 400},
    {217, {108,  68, 130, 20}, {188, 30, 125, 20}, 0x2,     0xAFFFFF,  0, 15, 400},
    {218, { 20, 130, 200, 35}, { 50, 80, 200, 35}, 0x1,     0x6AFFFF,  0, 25, 400},
    {219, { 38,  68,  33, 20}, { 36, 30,  40, 20}, 0x0,     0xAFFFFF,  5, 15, 600},
    {220, {  5, 170, 180, 40}, {  1, 87, 180, 40}, 0x0,     0x0000FF, 12,  0, 400},
    {221, {  2,  68,  32, 20}, {  1, 30,  31, 20}, 0x0,     0xAFFFFF,  5, 15, 400},
    {223, { 76,  68,  20, 20}, { 77, 30,  20, 20}, 0x0,     0xAFFFFF,  0, 15, 400},
    {226, { 18,  52, 110, 15}, {100, 30,  80, 15}, 0x2,     0x0000FF,  0, 15, 400},
};

inline constexpr ButtonLayout kButtonLayout[] = {
    {208, 2, { 16, 213, 17, 18}, { 53, 133, 17, 18}, 6,   0,   0,   0,   0},
    {200, 2, { 11, 236, 34, 30}, { 48, 155, 34, 30}, 5,   0,   0,   0,   0},
    {201, 1, { 82, 236, 37, 30}, {119, 155, 37, 30}, 2,  37,  37,  37,  37},
    {202, 1, {120, 236, 37, 30}, {157, 155, 37, 30}, 2,  75,  75,  75,  75},
    {215, 1, { 45, 236, 37, 30}, { 82, 155, 37, 30}, 2,   0,   0,   0,   0},
    {216, 1, {158, 236, 37, 30}, {195, 155, 37, 30}, 2, 112, 112, 112, 112},
    {207, 2, {195, 236, 33, 30}, {235, 155, 33, 30}, 4,   0,  66,   0,  66},
    {224, 0, {158, 216, 29, 15}, {191, 135, 29, 15}, 2, 150, 150, 150, 150},
    {225, 0, {187, 216, 32, 15}, {222, 135, 32, 15}, 2, 180, 180, 180, 180},
};

// Bitmap ids by index: portrait, landscape.
inline constexpr UINT kBitmapLayout[7][2] = {
    {186, 188}, {189, 190}, {191, 192}, {193, 194}, {195, 196}, {197, 198}, {199, 200},
};
// clang-format on

inline constexpr SkinRect kTrackPortrait = {35, 215, 80, 13};
inline constexpr SkinRect kTrackLandscape = {71, 134, 80, 13};
inline constexpr SkinRect kProgressPortrait = {40, 113, 159, 14};
inline constexpr SkinRect kProgressLandscape = {65, 55, 159, 14};

inline SkinRect TrackAt(const Screen& screen) {
    return screen.portrait ? kTrackPortrait : kTrackLandscape;
}
inline SkinRect ProgressAt(const Screen& screen) {
    return screen.portrait ? kProgressPortrait : kProgressLandscape;
}
