// The power manager's calls: the system's power state, notifications of it, the idle timer, unattended mode,
// and which keys reach the foreground window.
#include <cwchar>
#include <map>
#include <memory>
#include <mutex>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/power/message_queues.h"
#include "handset/include/pm.h"
#include "handset/state/handset_state.h"
#include "handset/state/message_queue.h"
#include "handset/state/power_manager.h"

namespace {

using coredll::CCallGuard;
using handset::CQueueEnd;

// A request for notifications: while it stands the power manager has an end to write, without which the queue
// would count as broken.
using Requests = std::map<HANDLE, std::unique_ptr<CQueueEnd>>;
std::mutex g_lock;  // guards AllRequests()
Requests& AllRequests() {
    // Never destroyed: threads still call while the process ends.
    static auto* const requests = new Requests;
    return *requests;
}

HANDLE HandleOf(std::uint32_t number) {
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(number));
}

HANDLE Refused(DWORD error) {
    SetLastError(error);
    return nullptr;
}

}  // namespace

COREDLL_EXPORT DWORD WINAPI DeviceGetSystemPowerState(wchar_t* name, DWORD length, DWORD* flags) try {
    const CCallGuard guard;
    if (name == nullptr || length == 0 || flags == nullptr) return ERROR_INVALID_PARAMETER;
    const handset::PowerState state = handset::CurrentPowerState();
    if (state.name.size() >= length) return ERROR_INSUFFICIENT_BUFFER;
    std::wmemcpy(name, state.name.c_str(), state.name.size() + 1);
    *flags = state.flags;
    return ERROR_SUCCESS;
} catch (...) {
    return handset::EdgeError();
}

COREDLL_EXPORT DWORD WINAPI DeviceSetSystemPowerState(const wchar_t* name, DWORD flags,
                                                      DWORD /*options*/) try {
    const CCallGuard guard;
    return name != nullptr ? handset::ChangePowerState(std::wstring(name)) : handset::ChangePowerState(flags);
} catch (...) {
    return handset::EdgeError();
}

COREDLL_EXPORT HANDLE WINAPI RequestPowerNotifications(HANDLE queue, DWORD kinds) try {
    const CCallGuard guard;
    if (handset::FaultInjected(L"power-notify")) return Refused(ERROR_ACCESS_DENIED);
    if (kinds == 0) return Refused(ERROR_INVALID_PARAMETER);
    bool reads = false;
    const std::wstring id = coredll::QueueOfHandle(queue, &reads);
    if (id.empty() || !reads) return Refused(ERROR_INVALID_HANDLE);
    std::unique_ptr<CQueueEnd> end;
    const DWORD error = CQueueEnd::Open(id, false, nullptr, &end);
    if (error != ERROR_SUCCESS) return Refused(error);
    const auto number = handset::AddPowerListener(id, kinds);
    if (!number) return Refused(ERROR_OUTOFMEMORY);
    const std::lock_guard<std::mutex> lock(g_lock);
    AllRequests()[HandleOf(*number)] = std::move(end);
    return HandleOf(*number);
} catch (...) {
    return handset::EdgeAnswer<HANDLE>();
}

COREDLL_EXPORT DWORD WINAPI StopPowerNotifications(HANDLE notifications) try {
    const CCallGuard guard;
    const std::lock_guard<std::mutex> lock(g_lock);
    const auto found = AllRequests().find(notifications);
    if (found == AllRequests().end()) return ERROR_INVALID_PARAMETER;
    handset::RemovePowerListener(static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(notifications)));
    AllRequests().erase(found);
    return ERROR_SUCCESS;
} catch (...) {
    return handset::EdgeError();
}

// The state value IdleTimerResets holds how often the count has started anew.
COREDLL_EXPORT void WINAPI DeviceSystemIdleTimerReset(void) try {
    const CCallGuard guard;
    handset::ResetIdleTimer();
} catch (...) {
    handset::EdgeAnswer<void>();
}

// Device differs: of the notices to the power manager only unattended mode is known.
COREDLL_EXPORT BOOL WINAPI DevicePowerPolicyNotify(DWORD message, DWORD data) try {
    const CCallGuard guard;
    if (message != PPN_UNATTENDEDMODE) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return handset::HoldUnattended(data != 0);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI DeviceAllKeys(BOOL allKeys) try {
    const CCallGuard guard;
    return handset::WantAllKeys(allKeys != FALSE);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
