#include "shell/headset.h"

#include <regext.h>
#include <cstdio>

#include "resources/resource_ids.h"
#include "shell/texts.h"

namespace {

constexpr UINT kHeadsetOffClose_ms = 2000;

void CALLBACK HeadsetOffTimerProc(HWND window, UINT, UINT_PTR, DWORD) {
    std::printf("Headset is turn off and to Close FM\n");
    KillTimer(window, TIMER_HEADSET_OFF);
    PostMessageW(window, WM_CLOSE, 0, 0);
}

}  // namespace

bool IsHeadsetMissing() {
    DWORD headset = 0;
    RegistryGetDWORD(HKEY_LOCAL_MACHINE, L"System\\State\\Hardware", L"Headset", &headset);
    return headset == 0;
}

void ShowHeadsetWarning() {
    ShowText(nullptr, IDS_NO_HEADSET, L"WARNING", MB_ICONEXCLAMATION);
}

void OnHeadsetChanged(HWND window, WPARAM headset) {
    if (headset != 0) {
        NKDbgPrintfW(L"FM: === Headset on ===\r\n");
        return;
    }
    NKDbgPrintfW(L"FM: === Headset off ===\r\n");
    // The box is modal and stays until it is answered; the timer closes the radio behind it all the same.
    SetTimer(window, TIMER_HEADSET_OFF, kHeadsetOffClose_ms, HeadsetOffTimerProc);
    ShowHeadsetWarning();
}
