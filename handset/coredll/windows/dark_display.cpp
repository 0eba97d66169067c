#include "handset/coredll/windows/dark_display.h"

#include "handset/base/module_edge.h"
#include "handset/state/power_manager.h"

namespace coredll {
namespace {

constexpr UINT kLook_ms = 50;  // of real time: it is an eye that waits

constexpr wchar_t kHiddenMark[] = L"KoraHandset.HiddenByDarkness";

bool IsDark() {
    return !handset::DisplayLit(handset::CurrentPowerState());
}

BOOL CALLBACK Show(HWND window, LPARAM) try {
    if (RemovePropW(window, kHiddenMark) != nullptr) SetWindowRgn(window, nullptr, TRUE);
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(TRUE);
}

void CALLBACK ShowOnceLit(HWND, UINT, UINT_PTR timer, DWORD) try {
    if (IsDark()) return;
    KillTimer(nullptr, timer);
    EnumThreadWindows(GetCurrentThreadId(), Show, 0);
} catch (...) {
    handset::EdgeAnswer<void>();
}

}  // namespace

void HideWhileDark(HWND window) {
    if (!IsDark()) return;
    SetPropW(window, kHiddenMark, window);
    // The window owns the region, which has nothing in it.
    SetWindowRgn(window, CreateRectRgn(0, 0, 0, 0), FALSE);
    SetTimer(nullptr, 0, kLook_ms, ShowOnceLit);
}

}  // namespace coredll
