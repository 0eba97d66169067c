// What the handset's parts own of the host and have to give back: kernel handles and registry keys.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace handset {

// unique_ptr for a handle type: `Close` gives the handle back.
template <typename Handle, auto Close>
struct HandleCloser {
    using pointer = Handle;
    void operator()(Handle handle) const { Close(handle); }
};
template <typename Handle, auto Close>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, HandleCloser<Handle, Close>>;

using OwnedKey = Owned<HKEY, RegCloseKey>;
using OwnedHandle = Owned<HANDLE, CloseHandle>;

}  // namespace handset
