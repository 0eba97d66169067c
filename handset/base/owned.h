// What the handset's parts own of the host, given back at the end of its scope. Owners are moved and never
// copied. Giving back keeps the thread's last error, so that a caller may still read why the work before
// failed. Host code only.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace handset {

// Puts the last error back when it goes.
class CKeptLastError {
  public:
    CKeptLastError() : error_(GetLastError()) {}
    ~CKeptLastError() { SetLastError(error_); }
    CKeptLastError(const CKeptLastError&) = delete;
    CKeptLastError& operator=(const CKeptLastError&) = delete;

  private:
    DWORD error_;
};

// unique_ptr for a handle: `Close` gives it back.
template <typename Handle, auto Close>
struct HandleCloser {
    using pointer = Handle;
    void operator()(Handle handle) const {
        const CKeptLastError kept;
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
class CPutPointer {
  public:
    explicit CPutPointer(Owner& owner) : owner_(owner) {}
    ~CPutPointer() { owner_.reset(handle_); }
    CPutPointer(const CPutPointer&) = delete;
    CPutPointer& operator=(const CPutPointer&) = delete;
    operator typename Owner::pointer *() { return &handle_; }

  private:
    Owner& owner_;
    typename Owner::pointer handle_ = nullptr;
};

template <typename Owner>
CPutPointer<Owner> Put(Owner& owner) {
    return CPutPointer<Owner>(owner);
}

// Selects an object for the length of a scope.
class CSelectedObject {
  public:
    CSelectedObject(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
    ~CSelectedObject() {
        const CKeptLastError kept;
        SelectObject(dc_, before_);
    }
    CSelectedObject(const CSelectedObject&) = delete;
    CSelectedObject& operator=(const CSelectedObject&) = delete;

  private:
    HDC dc_;
    HGDIOBJ before_;
};

// The device context of a window, or of the whole screen (null), for the length of a scope.
class CWindowDC {
  public:
    explicit CWindowDC(HWND window) : window_(window), dc_(GetDC(window)) {}
    ~CWindowDC() {
        const CKeptLastError kept;
        ReleaseDC(window_, dc_);
    }
    CWindowDC(const CWindowDC&) = delete;
    CWindowDC& operator=(const CWindowDC&) = delete;
    [[nodiscard]] HDC get() const { return dc_; }

  private:
    HWND window_;
    HDC dc_;
};

}  // namespace handset
