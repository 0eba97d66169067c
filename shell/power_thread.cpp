#include "shell/power_thread.h"

#include <cstring>
#include <cwchar>
#include <iterator>
#include <memory>
#include <new>

#include "shell/main_state.h"
#include "shell/owned.h"

namespace {

constexpr DWORD kMostMessages = 4;
constexpr DWORD kMessageSize = 536;  // bytes
constexpr DWORD kIdleReset_ms = 15000;
constexpr WCHAR kScreenOffKey[] = L"\\System\\CurrentControlSet\\Control\\Power\\State\\ScreenOff";
constexpr WCHAR kDeviceValue[] = L"att1:";
constexpr DWORD kDeviceLevel = 4;  // D4, off

// What the thread has asked the platform for, given back in one order.
struct PowerWatch {
    HANDLE hQueue = nullptr;
    HANDLE hNotifications = nullptr;
    bool bUnattended = false;
    HKEY hScreenOff = nullptr;
    DWORD dwTimeout_ms = INFINITE;
};

bool StartWatch(PowerWatch& watch) {
    MSGQUEUEOPTIONS options = {sizeof options, MSGQUEUE_NOPRECOMMIT, kMostMessages, kMessageSize, TRUE};
    watch.hQueue = CreateMsgQueue(nullptr, &options);
    if (watch.hQueue == nullptr) {
        NKDbgPrintfW(L"FM: CreateMsgQueue failed: %x\n", GetLastError());
        return false;
    }
    watch.hNotifications = RequestPowerNotifications(watch.hQueue, PBT_TRANSITION);
    if (watch.hNotifications == nullptr) {
        NKDbgPrintfW(L"FM: RequestPowerNotifications failed: %x\n", GetLastError());
        return false;
    }
    watch.bUnattended = true;
    PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE);
    return true;
}

// The device behind "att1:" stays off while the display is; written without a look at the results.
void WriteDeviceLevel(PowerWatch& watch) {
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, kScreenOffKey, 0, KEY_ALL_ACCESS, &watch.hScreenOff);
    RegSetValueExW(watch.hScreenOff, kDeviceValue, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&kDeviceLevel),
                   sizeof kDeviceLevel);
}

void GoUnattended(PowerWatch& watch) {
    NKDbgPrintfW(L"FM: Power ......unattended...\n");
    SystemIdleTimerReset();
    watch.dwTimeout_ms = kIdleReset_ms;
}

void GoOn(PowerWatch& watch) {
    NKDbgPrintfW(L"FM: Power ......ON.....\n");
    watch.dwTimeout_ms = INFINITE;
}

// Other states change nothing.
struct StateRow {
    const WCHAR* pszName;
    void (*handler)(PowerWatch&);
};
constexpr StateRow kStates[] = {{L"unattended", GoUnattended}, {L"on", GoOn}};

void OnTransition(PowerWatch& watch, const POWER_BROADCAST& message) {
    NKDbgPrintfW(L"FM: Power Notification Message: PBT_TRANSITION\n");
    if (message.Length == 0) return;
    NKDbgPrintfW(L"FM: SystemPowerState: %.100s\n", message.SystemPowerState);
    for (const StateRow& row : kStates) {
        if (std::wcscmp(message.SystemPowerState, row.pszName) == 0) row.handler(watch);
    }
}

void ReadMessages(PowerWatch& watch) {
    // With one character more that no message fills: a name is a text, whatever arrives.
    const std::unique_ptr<BYTE[]> buffer(new (std::nothrow) BYTE[kMessageSize + sizeof(WCHAR)]());
    if (!buffer) return;
    DWORD read = 0, flags = 0;
    for (;;) {
        std::memset(buffer.get(), 0, kMessageSize);  // nothing of the message before
        if (!ReadMsgQueue(watch.hQueue, buffer.get(), kMessageSize, &read, 0, &flags)) return;
        const auto& message = *reinterpret_cast<const POWER_BROADCAST*>(buffer.get());
        if (message.Message == PBT_TRANSITION) OnTransition(watch, message);
    }
}

void ResetIdleTimer() {
    NKDbgPrintfW(L"FM: SystemIdleTimerReset...%d..\n", GetTickCount());
    SystemIdleTimerReset();
}

void WatchUntil(HANDLE stopEvent, PowerWatch& watch) {
    const HANDLE events[] = {watch.hQueue, stopEvent};
    for (;;) {
        const DWORD signalled =
            WaitForMultipleObjects(static_cast<DWORD>(std::size(events)), events, FALSE, watch.dwTimeout_ms);
        if (signalled == WAIT_OBJECT_0) ReadMessages(watch);
        if (signalled == WAIT_OBJECT_0 + 1) return;
        if (signalled == WAIT_TIMEOUT) ResetIdleTimer();
    }
}

void EndWatch(const PowerWatch& watch) {
    if (watch.hNotifications != nullptr) StopPowerNotifications(watch.hNotifications);
    if (watch.hQueue != nullptr) CloseMsgQueue(watch.hQueue);
    if (watch.bUnattended) PowerPolicyNotify(PPN_UNATTENDEDMODE, FALSE);
    // The key stays open: it ends with the program, which ends with this thread.
    RegDeleteValueW(watch.hScreenOff, kDeviceValue);
}

}  // namespace

DWORD WINAPI PowerNotifyProc(LPVOID mainState) {
    const HANDLE stopEvent = static_cast<const CMainState*>(mainState)->m_hPowerStopEvent;
    PowerWatch watch;
    if (StartWatch(watch)) {
        WriteDeviceLevel(watch);
        WatchUntil(stopEvent, watch);
    }
    EndWatch(watch);
    return 0;
}
