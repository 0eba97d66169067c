#include "tuner/phone_state.h"

#include "shell/main_state.h"
#include "shell/messages.h"

namespace {

void Close(HREGNOTIFY& notify) {
    if (notify != nullptr) RegistryCloseNotification(notify);
    notify = nullptr;
}

}  // namespace

void WatchPhoneState(CMainState& state, HWND window) {
    RegistryNotifyWindow(HKEY_LOCAL_MACHINE, L"System\\State\\Hardware", L"Headset", window,
                         WM_HEADSET_CHANGED, 0, nullptr, &state.m_hHeadsetNotify);
    RegistryNotifyWindow(HKEY_LOCAL_MACHINE, L"System\\State\\Phone", L"Status", window, WM_PHONE_CHANGED, 0,
                         nullptr, &state.m_hPhoneNotify);
}

void UnwatchPhoneState(CMainState& state) {
    Close(state.m_hHeadsetNotify);
    Close(state.m_hPhoneNotify);
}
