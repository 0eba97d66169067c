// Tells whether anything below a key of the user's registry has changed, by one look at two events.
#pragma once

#include <windows.h>

#include <string>

#include "handset/state/owned_handle.h"

namespace handset {

// Not safe for threads: its user has a lock. An event is signalled by the change itself, before the call that
// makes it returns, so a change is never seen late.
class StateWatch {
  public:
    explicit StateWatch(const std::wstring& path);
    StateWatch(const StateWatch&) = delete;
    StateWatch& operator=(const StateWatch&) = delete;

    // True when nothing has changed since the call before. At first, after a change, and always when the
    // registry cannot be watched: false.
    bool Unchanged();

  private:
    void WatchParent();
    void WatchKey();

    const std::wstring path_;
    const std::wstring parentPath_;
    OwnedHandle keyChanged_;     // a value or a key below
    OwnedHandle parentChanged_;  // the key itself may have come, or gone: then key_ is a dead one
    OwnedKey parent_;
    OwnedKey key_;
    bool watching_ = false;
};

}  // namespace handset
