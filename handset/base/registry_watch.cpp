#include "handset/base/registry_watch.h"

#include <iterator>

namespace handset {
namespace {

constexpr DWORD kChanges = REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET;

std::wstring ParentOf(const std::wstring& path) {
    const std::size_t end = path.rfind(L'\\');
    return end == std::wstring::npos ? L"" : path.substr(0, end);
}

// One call brings one notice.
bool AskForNotice(HKEY key, bool below, DWORD changes, HANDLE event) {
    return RegNotifyChangeKeyValue(key, below, changes, event, TRUE) == ERROR_SUCCESS;
}

// A key that was deleted says nothing any more, also when another one of its name has come.
bool IsDead(HKEY key) {
    return RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr) != ERROR_SUCCESS;
}

}  // namespace

CRegistryWatch::CRegistryWatch(const std::wstring& path, Depth depth, Missing missing)
    : path_(path),
      parentPath_(ParentOf(path)),
      depth_(depth),
      missing_(missing),
      keyChanged_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      parentChanged_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

bool CRegistryWatch::Unchanged() {
    const HANDLE events[] = {parentChanged_.get(), keyChanged_.get()};
    // Who waits does not come by again to find out that all of a tree went at once, its parents included.
    const bool dead = missing_ == Missing::kMade && watching_ && IsDead(key_.get());
    if (!watching_ || dead) {
        WatchParent();
        return false;
    }
    switch (WaitForMultipleObjects(std::size(events), events, FALSE, 0)) {
        case WAIT_TIMEOUT:
            return true;
        case WAIT_OBJECT_0 + 1:
            WatchKey();
            return false;
        default:
            WatchParent();
            return false;
    }
}

// RegOpenCurrentUser is the way past COREDLL, whose HKEY_CURRENT_USER is the device's.
OwnedKey CRegistryWatch::OpenKey(const OwnedKey& user) const {
    constexpr REGSAM kAccess = KEY_NOTIFY | KEY_QUERY_VALUE;
    OwnedKey key;
    if (missing_ == Missing::kMade) {
        RegCreateKeyExW(user.get(), path_.c_str(), 0, nullptr, 0, kAccess, nullptr, Put(key), nullptr);
    } else {
        RegOpenKeyExW(user.get(), path_.c_str(), 0, kAccess, Put(key));
    }
    return key;
}

// The key is opened again: one that was deleted and made anew is another one. Takes no memory, for a notice
// that came is not told a second time.
void CRegistryWatch::WatchParent() {
    watching_ = false;
    parent_.reset();
    key_.reset();
    OwnedKey user;
    if (!keyChanged_ || !parentChanged_ ||
        RegOpenCurrentUser(KEY_READ | KEY_WRITE, Put(user)) != ERROR_SUCCESS)
        return;
    // Made before its parent is watched, which would tell of it.
    if (missing_ == Missing::kMade) (void)OpenKey(user);
    RegOpenKeyExW(user.get(), parentPath_.c_str(), 0, KEY_NOTIFY, Put(parent_));
    // Not before the old keys were closed: the host signals a watch that is given up.
    ResetEvent(parentChanged_.get());
    ResetEvent(keyChanged_.get());
    watching_ = parent_ && AskForNotice(parent_.get(), false, REG_NOTIFY_CHANGE_NAME, parentChanged_.get());
    key_ = OpenKey(user);
    if (watching_ && key_) WatchKey();
    if (missing_ == Missing::kMade && !key_) watching_ = false;
}

void CRegistryWatch::WatchKey() {
    ResetEvent(keyChanged_.get());
    watching_ = AskForNotice(key_.get(), depth_ == Depth::kTree, kChanges, keyChanged_.get());
}

}  // namespace handset
