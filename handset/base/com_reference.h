// References to COM objects, as their users and as they themselves hold them. Host code only.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <atomic>
#include <utility>

#include "handset/base/owned.h"

namespace handset {

template <typename Interface>
class CRef {
  public:
    CRef() = default;
    // One more reference to what the caller has.
    explicit CRef(Interface* object) : object_(object) {
        if (object_ != nullptr) object_->AddRef();
    }
    CRef(const CRef& other) : CRef(other.object_) {}
    CRef(CRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    CRef& operator=(CRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~CRef() {
        if (object_ == nullptr) return;
        const CKeptLastError kept;
        object_->Release();
    }

    Interface* Get() const { return object_; }
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    void Reset() { *this = CRef(); }
    // For calls that give a reference through a pointer; what was held is released first.
    Interface** Put() {
        Reset();
        return &object_;
    }
    // Gives the reference to the caller.
    [[nodiscard]] Interface* Detach() { return std::exchange(object_, nullptr); }

  private:
    Interface* object_ = nullptr;
};

// How many references an object has; the first is its maker's.
class CReferenceCount {
  public:
    ULONG AddRef() { return ++count_; }
    // The last one takes the object along, and this with it.
    template <typename Object>
    ULONG Release(Object* object) {
        const ULONG left = --count_;
        if (left == 0) delete object;
        return left;
    }

  private:
    std::atomic<ULONG> count_{1};
};

// The interface of an object, or an empty reference.
template <typename Interface>
CRef<Interface> Query(IUnknown* object, const IID& iid) {
    void* found = nullptr;
    CRef<Interface> reference;
    if (object != nullptr && SUCCEEDED(object->QueryInterface(iid, &found)))
        *reference.Put() = static_cast<Interface*>(found);
    return reference;
}

}  // namespace handset
