// Watching the device's registry.
#include "handset/aygshell/registry_watcher.h"

#include "handset/state/handset_state.h"

namespace handset {
namespace {

constexpr DWORD kFilter = REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET;

}  // namespace

RegistryWatcher::RegistryWatcher() : changed_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

bool RegistryWatcher::Open() {
    // The device's registry is a subtree of the user's own; RegOpenCurrentUser is the way past COREDLL, whose
    // HKEY_CURRENT_USER is the device's.
    HKEY user = nullptr;
    if (RegOpenCurrentUser(KEY_READ | KEY_WRITE, &user) != ERROR_SUCCESS) return false;
    const OwnedKey owned(user);
    HKEY registry = nullptr;
    const std::wstring path = StateKeyPath() + L"\\Registry";
    if (RegCreateKeyExW(user, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_NOTIFY, nullptr, &registry,
                        nullptr) != ERROR_SUCCESS) {
        return false;
    }
    registry_.reset(registry);
    return true;
}

bool RegistryWatcher::Arm() {
    // The second round is for a registry that was deleted and made anew under the watch.
    for (int round = 0; round < 2; ++round) {
        if (!registry_ && !Open()) return false;
        if (RegNotifyChangeKeyValue(registry_.get(), TRUE, kFilter, changed_.get(), TRUE) == ERROR_SUCCESS) {
            return true;
        }
        registry_.reset();
    }
    return false;
}

}  // namespace handset
