// The skin as the main state holds it: the tables, and the window on which they are painted.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "skin/skin_tables.h"

// What is known of one thing that is painted over the background (skin/shown_texts.h).
struct SkinShown {
    std::atomic<std::uint32_t> nPaints{0};  // of its pixels, by any thread
    // Of the thread that shows it: whether it did, where, and the count after that paint.
    bool bKnown = false;
    std::uint32_t nShownAt = 0;
    HWND hWnd = nullptr;
};
// At least the longest text that the receiver gives.
inline constexpr std::size_t kShownTextCapacity = 260;
// In memory of its own: the monitor, which fills it, may be suspended anywhere, also while it holds the lock
// of the process's heap.
struct SkinShownText : SkinShown {
    WCHAR szText[kShownTextCapacity] = L"";
};
// At least the rows of the text table.
inline constexpr int kMostShownTexts = 16;

// At least the rows of the bitmap table.
inline constexpr int kMostBitmaps = 8;

struct CSkin : SkinTables {
    HINSTANCE hInstance = nullptr;              // module of the bitmaps
    HWND hWnd = nullptr;                        // stored by SkinWindowProc
    SkinShownText shownTexts[kMostShownTexts];  // by row of the text table
    SkinShown shownSignal;
    // Whether the table's images are those for wide screens, by orientation, and the ones that it had before
    // the screen's size changed. They are kept: a worker thread may be in the middle of a paint with one.
    bool bWidePortrait = false, bWideLandscape = false;
    HBITMAP hSparePortrait[kMostBitmaps] = {}, hSpareLandscape[kMostBitmaps] = {};
};
