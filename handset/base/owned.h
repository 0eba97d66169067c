// What the handset's parts own of the host, given back at the end of its scope. Owners are moved and never
// copied. Giving back keeps the thread's last error, so that a caller may still read why the work before
// failed. Host code only.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace handset {

// Puts the last error back when it goes.
class KeptLastError {
  public:
    KeptLastError() : error_(GetLastError()) {}
    ~KeptLastError() { SetLastError(error_); }
    KeptLastError(const KeptLastError&) = delete;
    KeptLastError& operator=(const KeptLastError&) = delete;

  private:
    DWORD error_;
};

// unique_ptr for a handle: `Close` gives it back.
template <typename Handle, auto Close>
struct HandleCloser {
    using pointer = Handle;
    void operator()(Handle handle) const {
        const KeptLastError kept;
        Close(handle);
    }
};
template <typename Handle, auto Close>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, HandleCloser<Handle, Close>>;

using OwnedHandle = Owned<HANDLE, CloseHandle>;  // of the kernel; what opens a file is asked through Opened
using OwnedSearch = Owned<HANDLE, FindClose>;    // comes through Opened
using OwnedKey = Owned<HKEY, RegCloseKey>;
using OwnedMenu = Owned<HMENU, DestroyMenu>;
using OwnedFont = Owned<HFONT, DeleteObject>;
using OwnedBrush = Owned<HBRUSH, DeleteObject>;
using OwnedBitmap = Owned<HBITMAP, DeleteObject>;
using OwnedRegion = Owned<HRGN, DeleteObject>;
using OwnedMemoryDC = Owned<HDC, DeleteDC>;

// What calls that open a file or a search answer, with null where they answer INVALID_HANDLE_VALUE.
inline HANDLE Opened(HANDLE handle) {
    return handle == INVALID_HANDLE_VALUE ? nullptr : handle;
}

// For a call that gives a handle through a pointer: Put(owner) stands for that pointer, and the owner has the
// handle when the call is over.
template <typename Owner>
class Put {
  public:
    explicit Put(Owner& owner) : owner_(owner) {}
    ~Put() { owner_.reset(handle_); }
    Put(const Put&) = delete;
    Put& operator=(const Put&) = delete;
    operator typename Owner::pointer *() { return &handle_; }

  private:
    Owner& owner_;
    typename Owner::pointer handle_ = nullptr;
};

// Selects an object for the length of a scope.
class SelectedObject {
  public:
    SelectedObject(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
    ~SelectedObject() {
        const KeptLastError kept;
        SelectObject(dc_, before_);
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

  private:
    HDC dc_;
    HGDIOBJ before_;
};

// The device context of a window, or of the whole screen (null), for the length of a scope.
class WindowDC {
  public:
    explicit WindowDC(HWND window) : window_(window), dc_(GetDC(window)) {}
    ~WindowDC() {
        const KeptLastError kept;
        ReleaseDC(window_, dc_);
    }
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;
    [[nodiscard]] HDC get() const { return dc_; }

  private:
    HWND window_;
    HDC dc_;
};

}  // namespace handset
