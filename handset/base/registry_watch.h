// Tells whether anything at a key of the user's registry has changed, whichever program changed it: by a look
// at two events, or to a thread that waits for them. Host code only.
#pragma once

#include <windows.h>

#include <string>

#include "handset/base/owned.h"

namespace handset {

// Not safe for threads: its user has a lock, or it is one thread's own. Under a lock any thread may look; the
// host takes a watch back with the thread that asked for it, and the next look sees that as a change.
class CRegistryWatch {
  public:
    enum class Depth { kKey, kTree };  // the key's values and the names below it, or everything below it
    enum class Missing {
        kLeft,  // a key that is missing stays so; its parent tells when it comes
        kMade,  // is made at every look, with its parents
    };

    // `path`: below HKEY_CURRENT_USER of the host.
    CRegistryWatch(const std::wstring& path, Depth depth, Missing missing);

    // True when nothing has changed since the call before. At first, after a change, and always when the
    // registry cannot be watched: false. A change sets an event before the call that makes it returns, so it
    // is never seen late. What is read after the look is at least as new as the look.
    [[nodiscard]] bool Unchanged();
    // False: no event would tell of a change.
    [[nodiscard]] bool Watches() const { return watching_; }
    // Set by a change, until the next look.
    [[nodiscard]] HANDLE KeyEvent() const { return keyChanged_.get(); }
    [[nodiscard]] HANDLE ParentEvent() const { return parentChanged_.get(); }

  private:
    void WatchParent();
    void WatchKey();
    [[nodiscard]] OwnedKey OpenKey(const OwnedKey& user) const;

    const std::wstring path_;
    const std::wstring parentPath_;
    const Depth depth_;
    const Missing missing_;
    OwnedHandle keyChanged_;
    OwnedHandle parentChanged_;  // the key itself may have come, or gone: then key_ is a dead one
    OwnedKey parent_;
    OwnedKey key_;
    bool watching_ = false;
};

}  // namespace handset
