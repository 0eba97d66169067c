// The soft keys of one menu bar, as the resources of a program describe them.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "handset/base/owned.h"

namespace handset {

struct SoftKey {
    UINT command = 0;       // sent to the parent by a key without a menu; of its own for a key with one
    BYTE state = 0;         // TBSTATE_…
    HMENU popup = nullptr;  // belongs to SoftKeySet::menu
    std::wstring label;
};

// At most two keys, the left one first.
struct SoftKeySet {
    OwnedMenu menu;
    std::vector<SoftKey> keys;
};

// From a menu bar resource (RCDATA: menu id, number of buttons, then seven words a button). Nothing when the
// resource, its menu or one of its submenus is not there or the resource is cut short.
std::optional<SoftKeySet> SoftKeysFromBarResource(HINSTANCE module, UINT id);
// From a menu resource: its first two entries. Nothing when it is not there.
std::optional<SoftKeySet> SoftKeysFromMenu(HINSTANCE module, UINT id);
// One key that sends IDOK.
SoftKeySet DoneKey();

}  // namespace handset
