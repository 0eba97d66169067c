// Ownership of kernel handles and GDI objects inside the panel's functions.
#pragma once

#include <windows.h>

#include <memory>
#include <utility>

namespace panel {

// A kernel handle, closed at the end of its scope. INVALID_HANDLE_VALUE counts as none.
class OwnedHandle {
  public:
    explicit OwnedHandle(HANDLE handle = nullptr)
        : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    ~OwnedHandle() {
        if (handle_ != nullptr) CloseHandle(handle_);
    }
    OwnedHandle(OwnedHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    OwnedHandle& operator=(OwnedHandle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    [[nodiscard]] HANDLE get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

  private:
    HANDLE handle_;
};

struct GdiObjectDelete {
    void operator()(void* object) const { DeleteObject(static_cast<HGDIOBJ>(object)); }
};
struct MemoryDCDelete {
    void operator()(HDC dc) const { DeleteDC(dc); }
};
using OwnedFont = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiObjectDelete>;
using OwnedBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiObjectDelete>;
using OwnedMemoryDC = std::unique_ptr<std::remove_pointer_t<HDC>, MemoryDCDelete>;

// Selects an object for the length of a scope.
class SelectedObject {
  public:
    SelectedObject(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
    ~SelectedObject() { SelectObject(dc_, before_); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

  private:
    HDC dc_;
    HGDIOBJ before_;
};

}  // namespace panel
