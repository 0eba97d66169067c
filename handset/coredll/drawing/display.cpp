// The handset's display: its size, and its place on the host's screen inside the panel.
#include <algorithm>
#include <cstdint>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/own_windows.h"
#include "handset/state/screen_size.h"

namespace {

constexpr UINT kPanelAnswer_ms = 500;
constexpr DWORD_PTR kOriginKnown = 0x100000000;

int Width() {
    return static_cast<int>(handset::ScreenWidth());
}
int Height() {
    return static_cast<int>(handset::ScreenHeight());
}

POINT Origin() {
    const HWND panel = handset::FindOwnWindow(handset::kPanelClass);
    if (panel == nullptr) return {0, 0};
    static const UINT message = RegisterWindowMessageW(handset::kDisplayOriginMessage);
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(panel, message, 0, 0, SMTO_ABORTIFHUNG, kPanelAnswer_ms, &answer);
    if ((answer & kOriginKnown) == 0) return {0, 0};
    const auto packed = static_cast<DWORD>(answer);
    return {static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))};
}

}  // namespace

COREDLL_EXPORT void WINAPI HandsetDisplayRect(RECT* rect) try {
    const POINT origin = Origin();
    *rect = {origin.x, origin.y, origin.x + Width(), origin.y + Height()};
} catch (...) {
    *rect = {};
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT void WINAPI HandsetWorkArea(RECT* rect) try {
    HandsetDisplayRect(rect);
    rect->top += static_cast<LONG>(handset::ShellBarHeight());
} catch (...) {
    *rect = {};
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT BOOL WINAPI DeviceSystemParametersInfoW(UINT action, UINT parameter, void* data,
                                                       UINT update) try {
    const coredll::CCallGuard guard(coredll::CallKind::CallsBack);
    if (action != SPI_GETWORKAREA) return SystemParametersInfoW(action, parameter, data, update);
    if (data == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    HandsetWorkArea(static_cast<RECT*>(data));
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT int WINAPI DeviceGetSystemMetrics(int index) try {
    const coredll::CCallGuard guard;
    if (index == SM_CXSCREEN) return Width();
    if (index == SM_CYSCREEN) return Height();
    return GetSystemMetrics(index);
} catch (...) {
    return handset::EdgeAnswer<int>();
}
