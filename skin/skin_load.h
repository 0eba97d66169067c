// Loading the skin's images from the module of the resources.
#pragma once

#include "shell/owned.h"
#include "skin/skin.h"

// Loads both images of every row of the bitmap table from skin.hInstance and stores their handles, which live
// as long as the program. A missing table loads nothing; a missing image leaves a null handle, and what is
// painted with it stays as it is.
void LoadSkinBitmaps(CSkin& skin);

// The screen may have another size now: exchanges the images for those of its kind, which are loaded the
// first time. Thread of the window.
void FollowScreen(CSkin& skin);

// One image for a single paint: on a wide screen the one drawn for it (id + IDB_WIDE_OFFSET) when there is
// one, else the plain one. Empty when neither is there. Any thread.
[[nodiscard]] OwnedBitmap LoadSkinImage(HINSTANCE module, UINT id);
