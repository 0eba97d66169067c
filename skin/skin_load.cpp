// The skin's images: those kept for the run, and those for one paint.
#include "skin/skin_load.h"

#include <aygshell.h>

#include <algorithm>

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

}  // namespace

void LoadSkinBitmaps(CSkin& skin) {
    if (skin.pBitmaps == nullptr) return;
    // Loaded once, but the user may turn the device later: each orientation has its own width.
    const int cx = GetSystemMetrics(SM_CXSCREEN), cy = GetSystemMetrics(SM_CYSCREEN);
    const bool widePortrait = std::min(cx, cy) > kNarrowScreenWidth;
    const bool wideLandscape = std::max(cx, cy) > kNarrowScreenWidth;
    for (int i = 0; i < skin.nBitmaps; ++i) {
        SkinBitmap& row = skin.pBitmaps[i];
        // The table keeps the images for the whole run.
        row.hPortrait = LoadForScreen(skin.hInstance, row.uPortraitId, widePortrait).release();
        row.hLandscape = LoadForScreen(skin.hInstance, row.uLandscapeId, wideLandscape).release();
    }
}

OwnedBitmap LoadSkinImage(HINSTANCE module, UINT id) {
    return LoadForScreen(module, id, IsWideScreen());
}
