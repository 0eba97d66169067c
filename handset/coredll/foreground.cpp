// Windows of all programs: which one is in front, and which there are.
//
// SetForegroundWindow: on the device the lowest bit of the handle asks for the windows that the window owns
// as well; the host brings them along by itself and does not know the bit.
#include <cstdint>

#include "handset/coredll/call_guard.h"
#include "handset/state/own_windows.h"

COREDLL_EXPORT BOOL WINAPI DeviceSetForegroundWindow(HWND window) {
    const coredll::CallGuard guard(coredll::CallKind::CallsBack);
    const auto value = reinterpret_cast<std::uintptr_t>(window) & ~std::uintptr_t{1};
    return SetForegroundWindow(reinterpret_cast<HWND>(value));
}

// The windows of the device are those of its programs; whatever else stands on the host's desktop, another
// handset among it, is not there.
COREDLL_EXPORT HWND WINAPI DeviceFindWindowW(const wchar_t* windowClass, const wchar_t* title) {
    const coredll::CallGuard guard(coredll::CallKind::CallsBack);
    return handset::FindOwnWindow(windowClass, title);
}
