// RegistryNotifyWindow and RegistryCloseNotification: one worker thread reports the changes of every watched
// value as window messages. It runs while there is at least one notification.
#include <iterator>
#include <map>
#include <mutex>
#include <string>

#include "handset/aygshell/device_value.h"
#include "handset/aygshell/notify_condition.h"
#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/base/registry_watch.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/include/regext.h"
#include "handset/state/handset_state.h"

namespace handset {
namespace {

// How soon another attempt is made to watch a registry that could not be watched.
constexpr DWORD kRetry_ms = 250;

struct Notification {
    HKEY root = nullptr;  // predefined, or ownRoot's
    OwnedKey ownRoot;
    std::wstring key;
    std::wstring value;
    HWND window = nullptr;
    UINT message = 0;
    DWORD userData = 0;
    CNotifyCondition condition;
    std::optional<RegistryValue> last;
};

class CNotificationService {
  public:
    HREGNOTIFY Add(Notification notification);
    bool Remove(HREGNOTIFY handle);

  private:
    bool StartWorker();
    void StopWorker();
    static DWORD WINAPI WorkerProc(void* self);
    void Watch();
    void ReportChanges();

    std::mutex lifeLock_;  // one starter or stopper of the worker at a time; the worker never takes it
    std::mutex listLock_;  // guards list_ and nextHandle_; also held while messages are posted
    std::map<UINT_PTR, Notification> list_;
    UINT_PTR nextHandle_ = 1;
    OwnedHandle worker_;
    OwnedHandle stop_;
};

// Never destroyed: at the end of the process the worker may have been cut off inside it.
CNotificationService& Service() {
    static auto* const service = new CNotificationService;
    return *service;
}

std::optional<RegistryValue> Read(const Notification& notification) {
    return ReadDeviceValue(notification.root, notification.key.c_str(), notification.value.c_str());
}

// Posts the change, if it is one. A notification whose window is gone stays silent until it is closed.
void Report(Notification* notification) {
    if (notification->window == nullptr) return;
    std::optional<RegistryValue> now = Read(*notification);
    const bool report = notification->condition.Reports(notification->last, now);
    notification->last = std::move(now);
    if (!report) return;
    const auto number = notification->last ? AsDword(*notification->last) : std::nullopt;
    if (!PostMessageW(notification->window, notification->message, number.value_or(0),
                      notification->userData) &&
        !IsWindow(notification->window)) {
        notification->window = nullptr;
    }
}

bool CNotificationService::StartWorker() {
    if (worker_) return true;
    stop_.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!stop_) return false;
    worker_.reset(CreateThread(nullptr, 0, WorkerProc, this, 0, nullptr));
    return worker_ != nullptr;
}

void CNotificationService::StopWorker() {
    SetEvent(stop_.get());
    WaitForSingleObject(worker_.get(), INFINITE);
    worker_.reset();
    stop_.reset();
}

DWORD WINAPI CNotificationService::WorkerProc(void* self) {
    auto& service = *static_cast<CNotificationService*>(self);
    handset::KeepWorking([&] { service.Watch(); },
                         [&] { return WaitForSingleObject(service.stop_.get(), 0) == WAIT_TIMEOUT; });
    return 0;
}

void CNotificationService::Watch() {
    CRegistryWatch watch(StateKeyPath() + L"\\Registry", CRegistryWatch::Depth::kTree,
                         CRegistryWatch::Missing::kMade);
    const HANDLE wakers[] = {stop_.get(), watch.KeyEvent(), watch.ParentEvent()};
    do {
        // Looked first, read afterwards: a change in between is seen at once or wakes the next wait.
        if (!watch.Unchanged()) ReportChanges();
    } while (WaitForMultipleObjects(std::size(wakers), wakers, FALSE,
                                    watch.Watches() ? INFINITE : kRetry_ms) != WAIT_OBJECT_0);
}

void CNotificationService::ReportChanges() {
    const std::lock_guard<std::mutex> guard(listLock_);
    for (auto& [handle, notification] : list_) Report(&notification);
}

HREGNOTIFY CNotificationService::Add(Notification notification) {
    const std::lock_guard<std::mutex> lifeGuard(lifeLock_);
    UINT_PTR handle = 0;
    {
        const std::lock_guard<std::mutex> guard(listLock_);
        // What is stored now is what the first change is measured against.
        notification.last = Read(notification);
        handle = nextHandle_++;
        list_.emplace(handle, std::move(notification));
    }
    if (StartWorker()) return reinterpret_cast<HREGNOTIFY>(handle);
    const std::lock_guard<std::mutex> guard(listLock_);
    list_.erase(handle);
    return nullptr;
}

bool CNotificationService::Remove(HREGNOTIFY handle) {
    const std::lock_guard<std::mutex> lifeGuard(lifeLock_);
    bool last = false;
    {
        // After this block nothing is posted for the handle any more.
        const std::lock_guard<std::mutex> guard(listLock_);
        if (list_.erase(reinterpret_cast<UINT_PTR>(handle)) == 0) return false;
        last = list_.empty();
    }
    if (last) StopWorker();
    return true;
}

bool IsPredefined(HKEY root) {
    return !DeviceRegistryRootPath(root).empty();
}

}  // namespace
}  // namespace handset

extern "C" HRESULT WINAPI RegistryNotifyWindow(HKEY root, LPCWSTR key, LPCWSTR value, HWND window,
                                               UINT message, DWORD userData, NOTIFICATIONCONDITION* condition,
                                               HREGNOTIFY* notify) try {
    const CPlatformCall call(true);
    if (notify == nullptr) return E_INVALIDARG;
    *notify = nullptr;
    if (root == nullptr || !IsWindow(window)) return E_INVALIDARG;
    if (condition != nullptr && !handset::CNotifyCondition::IsValid(*condition)) return E_INVALIDARG;

    handset::Notification notification;
    // The key is made when it is missing, as on the device; of a key that the caller opened the notification
    // keeps a handle of its own.
    handset::OwnedKey opened;
    if (RegCreateKeyExW(root, key == nullptr ? L"" : key, 0, nullptr, 0, KEY_READ, nullptr,
                        handset::Put(opened), nullptr) != ERROR_SUCCESS) {
        return E_FAIL;
    }
    notification.root = root;
    if (handset::IsPredefined(root)) {
        notification.key = key == nullptr ? L"" : key;
    } else {
        notification.root = opened.get();
        notification.ownRoot = std::move(opened);
    }
    notification.value = value == nullptr ? L"" : value;
    notification.window = window;
    notification.message = message;
    notification.userData = userData;
    if (condition != nullptr) notification.condition = handset::CNotifyCondition(*condition);
    *notify = handset::Service().Add(std::move(notification));
    return *notify != nullptr ? S_OK : E_FAIL;
} catch (...) {
    return handset::EdgeResult();
}

extern "C" HRESULT WINAPI RegistryCloseNotification(HREGNOTIFY notify) try {
    const CPlatformCall call(true);
    return handset::Service().Remove(notify) ? S_OK : E_INVALIDARG;
} catch (...) {
    return handset::EdgeResult();
}
