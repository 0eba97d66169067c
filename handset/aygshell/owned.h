// What the shell library owns and has to give back: menus, fonts, brushes, registry keys, kernel handles.
#pragma once

#include <windows.h>

#include <memory>

namespace handset {

// unique_ptr for a handle type: `Close` gives the handle back.
template <typename Handle, auto Close>
struct HandleCloser {
    using pointer = Handle;
    void operator()(Handle handle) const { Close(handle); }
};
template <typename Handle, auto Close>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, HandleCloser<Handle, Close>>;

using OwnedMenu = Owned<HMENU, DestroyMenu>;
using OwnedFont = Owned<HFONT, DeleteObject>;
using OwnedBrush = Owned<HBRUSH, DeleteObject>;
using OwnedKey = Owned<HKEY, RegCloseKey>;
using OwnedHandle = Owned<HANDLE, CloseHandle>;

}  // namespace handset
