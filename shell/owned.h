// Owners of what the platform hands out: whoever holds one need not close it. Closing keeps the thread's last
// error, so that a caller may still read why the work before it failed. An owner belongs to one thread at a
// time.
#pragma once

#include <windows.h>

#include <utility>

// Puts the last error back when it goes.
class KeptLastError {
  public:
    KeptLastError() : m_error(GetLastError()) {}
    ~KeptLastError() { SetLastError(m_error); }
    KeptLastError(const KeptLastError&) = delete;
    KeptLastError& operator=(const KeptLastError&) = delete;

  private:
    DWORD m_error;
};

// One handle, closed by `close`. Both NULL and INVALID_HANDLE_VALUE mean "none", as different calls have it.
template <typename Handle, auto close>
class Owned {
  public:
    Owned() = default;
    explicit Owned(Handle handle) : m_handle(handle) {}
    Owned(Owned&& other) noexcept : m_handle(other.release()) {}
    Owned& operator=(Owned&& other) noexcept {
        if (this != &other) reset(other.release());
        return *this;
    }
    ~Owned() { reset(); }

    Handle get() const { return m_handle; }
    explicit operator bool() const {
        return m_handle != nullptr && m_handle != static_cast<Handle>(INVALID_HANDLE_VALUE);
    }
    // Gives the handle away: it stays open, and closing it is up to the caller.
    [[nodiscard]] Handle release() { return std::exchange(m_handle, nullptr); }
    void reset(Handle handle = nullptr) {
        if (*this) {
            KeptLastError kept;
            close(m_handle);
        }
        m_handle = handle;
    }
    // For calls that give a handle through a pointer; what was held is closed first.
    Handle* put() {
        reset();
        return &m_handle;
    }

  private:
    Handle m_handle = nullptr;
};

// A call's address as a template argument would carry its calling convention into every type's name.
inline void CloseOwnedHandle(HANDLE handle) {
    CloseHandle(handle);
}
inline void DeleteOwnedObject(HGDIOBJ object) {
    DeleteObject(object);
}
inline void DestroyOwnedMenu(HMENU menu) {
    DestroyMenu(menu);
}
inline void CloseOwnedKey(HKEY key) {
    RegCloseKey(key);
}
inline void DeleteOwnedDC(HDC dc) {
    DeleteDC(dc);
}

using OwnedHandle = Owned<HANDLE, &CloseOwnedHandle>;  // event, thread, mutex, file
using OwnedBitmap = Owned<HBITMAP, &DeleteOwnedObject>;
using OwnedFont = Owned<HFONT, &DeleteOwnedObject>;
using OwnedPen = Owned<HPEN, &DeleteOwnedObject>;
using OwnedBrush = Owned<HBRUSH, &DeleteOwnedObject>;
using OwnedMenu = Owned<HMENU, &DestroyOwnedMenu>;
using OwnedKey = Owned<HKEY, &CloseOwnedKey>;
using OwnedMemoryDC = Owned<HDC, &DeleteOwnedDC>;  // from CreateCompatibleDC

// Selects an object into a device context and the previous one back. False when the selection was refused.
class SelectObjectGuard {
  public:
    SelectObjectGuard(HDC dc, HGDIOBJ object) : m_dc(dc), m_previous(SelectObject(dc, object)) {}
    ~SelectObjectGuard() {
        KeptLastError kept;
        if (m_previous != nullptr) SelectObject(m_dc, m_previous);
    }
    SelectObjectGuard(const SelectObjectGuard&) = delete;
    SelectObjectGuard& operator=(const SelectObjectGuard&) = delete;
    explicit operator bool() const { return m_previous != nullptr; }

  private:
    HDC m_dc;
    HGDIOBJ m_previous;
};

// The device context of a window's client area, for one paint outside WM_PAINT.
class WindowDC {
  public:
    explicit WindowDC(HWND window) : m_window(window), m_dc(GetDC(window)) {}
    ~WindowDC() {
        KeptLastError kept;
        if (m_dc != nullptr) ReleaseDC(m_window, m_dc);
    }
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;
    HDC get() const { return m_dc; }
    explicit operator bool() const { return m_dc != nullptr; }

  private:
    HWND m_window;
    HDC m_dc;
};

// BeginPaint and EndPaint, within WM_PAINT.
class PaintDC {
  public:
    explicit PaintDC(HWND window) : m_window(window), m_dc(BeginPaint(window, &m_paint)) {}
    ~PaintDC() {
        KeptLastError kept;
        if (m_dc != nullptr) EndPaint(m_window, &m_paint);
    }
    PaintDC(const PaintDC&) = delete;
    PaintDC& operator=(const PaintDC&) = delete;
    HDC get() const { return m_dc; }
    const PAINTSTRUCT& paint() const { return m_paint; }

  private:
    HWND m_window;
    PAINTSTRUCT m_paint = {};
    HDC m_dc;
};

// One reference to a COM object.
template <typename Interface>
class ComPtr {
  public:
    ComPtr() = default;
    explicit ComPtr(Interface* reference) : m_reference(reference) {}  // takes the reference over
    ComPtr(ComPtr&& other) noexcept : m_reference(other.release()) {}
    ComPtr& operator=(ComPtr&& other) noexcept {
        if (this != &other) reset(other.release());
        return *this;
    }
    ~ComPtr() { reset(); }

    Interface* get() const { return m_reference; }
    Interface* operator->() const { return m_reference; }
    explicit operator bool() const { return m_reference != nullptr; }
    // Gives the reference away without releasing it.
    [[nodiscard]] Interface* release() { return std::exchange(m_reference, nullptr); }
    void reset(Interface* reference = nullptr) {
        // Emptied first: the last Release may run code that looks at this pointer again.
        Interface* old = std::exchange(m_reference, reference);
        if (old == nullptr) return;
        KeptLastError kept;
        old->Release();
    }
    // For calls that give an interface through a pointer; what was held is released first.
    Interface** put() {
        reset();
        return &m_reference;
    }
    void** putVoid() { return reinterpret_cast<void**>(put()); }

  private:
    Interface* m_reference = nullptr;
};
