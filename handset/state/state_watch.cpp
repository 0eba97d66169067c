#include "handset/state/state_watch.h"

namespace handset {
namespace {

// RegOpenCurrentUser is the way past COREDLL, whose HKEY_CURRENT_USER is the device's.
OwnedKey OpenForWatching(const std::wstring& path) {
    HKEY user = nullptr;
    if (RegOpenCurrentUser(KEY_READ, &user) != ERROR_SUCCESS) return nullptr;
    const OwnedKey owned(user);
    HKEY key = nullptr;
    return OwnedKey(RegOpenKeyExW(user, path.c_str(), 0, KEY_NOTIFY, &key) == ERROR_SUCCESS ? key : nullptr);
}

std::wstring ParentOf(const std::wstring& path) {
    const std::size_t end = path.rfind(L'\\');
    return end == std::wstring::npos ? L"" : path.substr(0, end);
}

// Its answer to a notice is asked for anew each time: one call brings one notice.
bool AskForNotice(HKEY key, bool below, DWORD changes, HANDLE event) {
    return RegNotifyChangeKeyValue(key, below, changes, event, TRUE) == ERROR_SUCCESS;
}

}  // namespace

StateWatch::StateWatch(const std::wstring& path)
    : path_(path),
      parentPath_(ParentOf(path)),
      keyChanged_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      parentChanged_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

bool StateWatch::Unchanged() {
    const HANDLE events[] = {parentChanged_.get(), keyChanged_.get()};
    if (!watching_) {
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

// The key is opened again: one that was deleted and made anew is another one. Takes no memory, for a notice
// that came is not told a second time.
void StateWatch::WatchParent() {
    parent_ = OpenForWatching(parentPath_);
    watching_ = keyChanged_ && parentChanged_ && parent_ &&
                AskForNotice(parent_.get(), false, REG_NOTIFY_CHANGE_NAME, parentChanged_.get());
    key_ = OpenForWatching(path_);
    // A key that is missing has no values to change; its parent tells when it is made.
    if (watching_ && key_) WatchKey();
}

void StateWatch::WatchKey() {
    watching_ = AskForNotice(key_.get(), true, REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET,
                             keyChanged_.get());
}

}  // namespace handset
