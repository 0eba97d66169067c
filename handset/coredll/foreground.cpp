// SetForegroundWindow: on the device the lowest bit of the handle asks for the windows that the window owns
// as well; the host brings them along by itself and does not know the bit.
#include <cstdint>

#include "handset/coredll/call_guard.h"

COREDLL_EXPORT BOOL WINAPI DeviceSetForegroundWindow(HWND window) {
    const coredll::CallGuard guard(coredll::CallKind::CallsBack);
    const auto value = reinterpret_cast<std::uintptr_t>(window) & ~std::uintptr_t{1};
    return SetForegroundWindow(reinterpret_cast<HWND>(value));
}
