// The power manager: the system's power state by name and flags, the idle timer, unattended mode, and which
// keys reach the foreground window.
#include <cwchar>

#include "handset/coredll/call_guard.h"
#include "handset/coredll/platform_call.h"
#include "handset/include/pm.h"
#include "handset/state/handset_state.h"

namespace {

struct PowerStateRow {
    const wchar_t* name;
    DWORD flags;
};

// A state that is asked for by flags is the first one that has them.
// clang-format off
constexpr PowerStateRow kPowerStates[] = {
    {L"on",           POWER_STATE_ON},
    {L"idle",         POWER_STATE_IDLE},
    {L"screenoff",    POWER_STATE_IDLE},
    {L"unattended",   POWER_STATE_UNATTENDED},
    {L"useridle",     POWER_STATE_USERIDLE},
    {L"backlightoff", POWER_STATE_USERIDLE},
    {L"suspend",      POWER_STATE_SUSPEND},
    {L"shutdown",     POWER_STATE_OFF},
    {L"reboot",       POWER_STATE_RESET},
};
// clang-format on

const PowerStateRow* StateNamed(const wchar_t* name) {
    for (const PowerStateRow& row : kPowerStates) {
        if (_wcsicmp(row.name, name) == 0) return &row;
    }
    return nullptr;
}

const PowerStateRow* StateWithFlags(DWORD flags) {
    for (const PowerStateRow& row : kPowerStates) {
        if (row.flags == flags) return &row;
    }
    return nullptr;
}

}  // namespace

COREDLL_EXPORT DWORD WINAPI DeviceGetSystemPowerState(wchar_t* name, DWORD length, DWORD* flags) {
    const coredll::CallGuard guard;
    if (name == nullptr || length == 0 || flags == nullptr) return ERROR_INVALID_PARAMETER;
    const std::wstring current = handset::StateString(L"PowerState", L"on");
    if (current.size() >= length) return ERROR_INSUFFICIENT_BUFFER;
    const PowerStateRow* row = StateNamed(current.c_str());
    std::wmemcpy(name, current.c_str(), current.size() + 1);
    *flags = row != nullptr ? row->flags : 0;
    return ERROR_SUCCESS;
}

COREDLL_EXPORT DWORD WINAPI DeviceSetSystemPowerState(const wchar_t* name, DWORD flags, DWORD /*options*/) {
    const coredll::CallGuard guard;
    const PowerStateRow* row = name != nullptr ? StateNamed(name) : StateWithFlags(flags);
    if (row == nullptr) return ERROR_INVALID_PARAMETER;
    return handset::SetStateString(L"PowerState", row->name) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

// The state holds how often the count has started anew.
COREDLL_EXPORT void WINAPI DeviceSystemIdleTimerReset(void) {
    const coredll::CallGuard guard;
    handset::SetStateDword(L"IdleTimerResets", handset::StateDword(L"IdleTimerResets", 0) + 1);
}

// Device differs: of the notices to the power manager only unattended mode is known. Requests are counted.
COREDLL_EXPORT BOOL WINAPI DevicePowerPolicyNotify(DWORD message, DWORD data) {
    const coredll::CallGuard guard;
    if (message != PPN_UNATTENDEDMODE) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const DWORD requests = handset::StateDword(L"UnattendedRequests", 0);
    if (data == 0 && requests == 0) return TRUE;
    return handset::SetStateDword(L"UnattendedRequests", data != 0 ? requests + 1 : requests - 1);
}

COREDLL_EXPORT BOOL WINAPI DeviceAllKeys(BOOL allKeys) {
    const coredll::CallGuard guard;
    return handset::SetStateDword(L"AllKeys", allKeys ? 1 : 0);
}
