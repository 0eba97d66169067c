// What the shell library owns and has to give back: menus, fonts and brushes, beside keys and kernel handles.
#pragma once

#include "handset/state/owned_handle.h"

namespace handset {

using OwnedMenu = Owned<HMENU, DestroyMenu>;
using OwnedFont = Owned<HFONT, DeleteObject>;
using OwnedBrush = Owned<HBRUSH, DeleteObject>;

}  // namespace handset
