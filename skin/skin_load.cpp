// The skin's images: those kept for the run, and those for one paint.
#include "skin/skin_load.h"

#include <aygshell.h>

#include <algorithm>
#include <utility>

#include "resources/resource_ids.h"
#include "skin/screen.h"

namespace {

OwnedBitmap LoadForScreen(HINSTANCE module, UINT id, bool wide) {
    if (wide) {
        OwnedBitmap image(SHLoadImageResource(module, id + IDB_WIDE_OFFSET));
        if (image) return image;
    }
    return OwnedBitmap(SHLoadImageResource(module, id));
}

// The user may turn the device later: each orientation has its own width.
struct Widths {
    bool bPortrait, bLandscape;
};

Widths WidthsOfScreen() {
    const int cx = GetSystemMetrics(SM_CXSCREEN), cy = GetSystemMetrics(SM_CYSCREEN);
    return {std::min(cx, cy) > kNarrowScreenWidth, std::max(cx, cy) > kNarrowScreenWidth};
}

}  // namespace

void LoadSkinBitmaps(CSkin& skin) {
    if (skin.pBitmaps == nullptr) return;
    const Widths wide = WidthsOfScreen();
    skin.bWidePortrait = wide.bPortrait;
    skin.bWideLandscape = wide.bLandscape;
    for (int i = 0; i < skin.nBitmaps; ++i) {
        SkinBitmap& row = skin.pBitmaps[i];
        // The table keeps the images for the whole run.
        row.hPortrait = LoadForScreen(skin.hInstance, row.uPortraitId, wide.bPortrait).release();
        row.hLandscape = LoadForScreen(skin.hInstance, row.uLandscapeId, wide.bLandscape).release();
    }
}

void FollowScreen(CSkin& skin) {
    if (skin.pBitmaps == nullptr) return;
    const Widths wide = WidthsOfScreen();
    const bool portrait = std::exchange(skin.bWidePortrait, wide.bPortrait) != wide.bPortrait;
    const bool landscape = std::exchange(skin.bWideLandscape, wide.bLandscape) != wide.bLandscape;
    const auto exchange = [&](UINT id, bool isWide, HBITMAP& shown, HBITMAP& spare) {
        if (spare == nullptr) spare = LoadForScreen(skin.hInstance, id, isWide).release();
        std::swap(shown, spare);
    };
    for (int i = 0; i < skin.nBitmaps && i < kMostBitmaps; ++i) {
        SkinBitmap& row = skin.pBitmaps[i];
        if (portrait) exchange(row.uPortraitId, wide.bPortrait, row.hPortrait, skin.hSparePortrait[i]);
        if (landscape) exchange(row.uLandscapeId, wide.bLandscape, row.hLandscape, skin.hSpareLandscape[i]);
    }
}

OwnedBitmap LoadSkinImage(HINSTANCE module, UINT id) {
    return LoadForScreen(module, id, IsWideScreen());
}
