// The tables of the radio's main screen.
#include "skin/skin.h"

#include "resources/resource_ids.h"

namespace {

// clang-format off
SkinBitmap g_bitmaps[] = {
    {kBitmapBackground, IDB_BACKGROUND_PORTRAIT, nullptr, IDB_BACKGROUND_LANDSCAPE, nullptr},
    {kBitmapDisabled,   IDB_DISABLED_PORTRAIT,   nullptr, IDB_DISABLED_LANDSCAPE,   nullptr},
    {kBitmapButtons,    IDB_BUTTONS_PORTRAIT,    nullptr, IDB_BUTTONS_LANDSCAPE,    nullptr},
    {kBitmapThumb,      IDB_THUMB_PORTRAIT,      nullptr, IDB_THUMB_LANDSCAPE,      nullptr},
    {kBitmapOutput,     IDB_SPEAKER_PORTRAIT,    nullptr, IDB_SPEAKER_LANDSCAPE,    nullptr},
    {kBitmapRecord,     IDB_RECORD_PORTRAIT,     nullptr, IDB_RECORD_LANDSCAPE,     nullptr},
    {kBitmapMute,       IDB_MUTE_PORTRAIT,       nullptr, IDB_MUTE_LANDSCAPE,       nullptr},
};

constexpr DWORD kPlain = 0, kRepeats = kButtonRepeats, kStates = kButtonHasStates;
constexpr int kOutput = kBitmapOutput, kRecord = kBitmapRecord, kMute = kBitmapMute;
constexpr int kButtons = kBitmapButtons, kDisabled = kBitmapDisabled;

// Each row: id, kind, look, frame, frames; then portrait and landscape: rectangle, pressed image, disabled image.
SkinButton g_buttons[] = {
    {SKIN_MUTE,            kStates,  kLookReleased, 0,        4,
     {{ 16, 213, 17, 18}, kMute,      0, 0, kDisabled,   0, 0}, {{ 53, 133, 17, 18}, kMute,      0, 0, kDisabled,   0, 0}},
    {SKIN_RECORD,          kStates,  kLookReleased, 0,        4,
     {{ 11, 236, 34, 30}, kRecord,    0, 0, kDisabled,   0, 0}, {{ 48, 155, 34, 30}, kRecord,    0, 0, kDisabled,   0, 0}},
    {SKIN_SEEK_DOWN,       kRepeats, kLookReleased, kNoFrame, 0,
     {{ 82, 236, 37, 30}, kButtons,  37, 0, kDisabled,  37, 0}, {{119, 155, 37, 30}, kButtons,  37, 0, kDisabled,  37, 0}},
    {SKIN_SEEK_UP,         kRepeats, kLookReleased, kNoFrame, 0,
     {{120, 236, 37, 30}, kButtons,  75, 0, kDisabled,  75, 0}, {{157, 155, 37, 30}, kButtons,  75, 0, kDisabled,  75, 0}},
    {SKIN_STEP_DOWN,       kRepeats, kLookReleased, kNoFrame, 0,
     {{ 45, 236, 37, 30}, kButtons,   0, 0, kDisabled,   0, 0}, {{ 82, 155, 37, 30}, kButtons,   0, 0, kDisabled,   0, 0}},
    {SKIN_STEP_UP,         kRepeats, kLookReleased, kNoFrame, 0,
     {{158, 236, 37, 30}, kButtons, 112, 0, kDisabled, 112, 0}, {{195, 155, 37, 30}, kButtons, 112, 0, kDisabled, 112, 0}},
    {SKIN_OUTPUT,          kStates,  kLookReleased, 0,        4,
     {{195, 236, 33, 30}, kOutput,    0, 0, kDisabled,   0, 0}, {{235, 155, 33, 30}, kOutput,   66, 0, kDisabled,  66, 0}},
    {SKIN_AF_LIST,         kPlain,   kLookReleased, kNoFrame, 0,
     {{158, 216, 29, 15}, kButtons, 150, 0, kDisabled, 150, 0}, {{191, 135, 29, 15}, kButtons, 150, 0, kDisabled, 150, 0}},
    {SKIN_RDS_INFORMATION, kPlain,   kLookReleased, kNoFrame, 0,
     {{187, 216, 32, 15}, kButtons, 180, 0, kDisabled, 180, 0}, {{222, 135, 32, 15}, kButtons, 180, 0, kDisabled, 180, 0}},
};

SkinSlider g_sliders[] = {
    {SKIN_VOLUME, kSliderHorizontal, kLookReleased, {{35, 215, 80, 13}, 18, 13}, {{71, 134, 80, 13}, 18, 13}, 13},
};

constexpr COLORREF kWhite = 0xFFFFFF, kPaleYellow = 0xAFFFFF, kYellow = 0x6AFFFF, kRed = 0x0000FF;
constexpr UINT kRightWithEllipsis = DT_RIGHT | 0x40000;  // a long channel name ends in dots

// Nobody writes field 213 today.
SkinText g_texts[] = {
    {TEXT_FREQUENCY,    {123,  30, 117, 35}, {150, 10, 120, 25}, DT_LEFT,                  kWhite,       0,  0, 700},
    {TEXT_CHANNEL_NAME, {  0,  28, 118, 25}, { 35,  8, 110, 25}, kRightWithEllipsis,       kWhite,       0, 22, 800},
    {TEXT_SERVICE_NAME, {143,  52,  95, 18}, {238, 15,  78, 18}, DT_RIGHT,                 kPaleYellow,  0, 15, 400},
    {213,               {  5,  22, 230, 14}, {  5, 22, 230, 14}, DT_CENTER,                kWhite,       0,  0, 400},
    {TEXT_PROGRAM_TEXT, {120,   0, 115, 20}, {235,  0,  80, 18}, DT_RIGHT,                 kWhite,       0, 12, 400},
    {TEXT_RADIO_TEXT,   {  2,  86, 235, 40}, {  5, 50, 310, 40}, DT_CENTER | DT_WORDBREAK, kWhite,       0, 12, 400},
    {TEXT_PROGRAM_TYPE, {108,  68, 130, 20}, {188, 30, 125, 20}, DT_RIGHT,                 kPaleYellow,  0, 15, 400},
    {TEXT_SCAN_PERCENT, { 20, 130, 200, 35}, { 50, 80, 200, 35}, DT_CENTER,                kYellow,      0, 25, 400},
    {TEXT_RDS,          { 38,  68,  33, 20}, { 36, 30,  40, 20}, DT_LEFT,                  kPaleYellow,  5, 15, 600},
    {TEXT_RECORD_TIME,  {  5, 170, 180, 40}, {  1, 87, 180, 40}, DT_LEFT,                  kRed,        12,  0, 400},
    {TEXT_STEREO,       {  2,  68,  32, 20}, {  1, 30,  31, 20}, DT_LEFT,                  kPaleYellow,  5, 15, 400},
    {TEXT_AF,           { 76,  68,  20, 20}, { 77, 30,  20, 20}, DT_LEFT,                  kPaleYellow,  0, 15, 400},
    {TEXT_LOW_SIGNAL,   { 18,  52, 110, 15}, {100, 30,  80, 15}, DT_RIGHT,                 kRed,         0, 15, 400},
};
// clang-format on

template <typename Row, int count>
constexpr int RowsOf(Row (&)[count]) {
    return count;
}

static_assert(RowsOf(g_bitmaps) == 7 && RowsOf(g_buttons) == 9 && RowsOf(g_sliders) == 1 &&
              RowsOf(g_texts) == 13 && RowsOf(g_bitmaps) <= kMostBitmaps &&
              RowsOf(g_texts) <= kMostShownTexts);

}  // namespace

SkinTables MainScreenTables() {
    return {g_bitmaps, RowsOf(g_bitmaps), g_buttons, RowsOf(g_buttons),
            g_sliders, RowsOf(g_sliders), g_texts,   RowsOf(g_texts)};
}
