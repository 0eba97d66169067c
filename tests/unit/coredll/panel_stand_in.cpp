// A window that answers like the panel.
#include "panel_stand_in.h"

#include "handset/state/handset_protocol.h"

namespace {

LRESULT CALLBACK PanelProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == RegisterWindowMessageW(handset::kDisplayOriginMessage)) {
        return GetWindowLongPtrW(window, GWLP_USERDATA);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

PanelStandIn::PanelStandIn(POINT origin) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = PanelProc;
    windowClass.lpszClassName = handset::kPanelClass;
    RegisterClassW(&windowClass);
    window_ =
        CreateWindowExW(0, handset::kPanelClass, L"", 0, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0x100000000 | static_cast<DWORD>(MAKELONG(origin.x, origin.y)));
}

PanelStandIn::~PanelStandIn() {
    DestroyWindow(window_);
    UnregisterClassW(handset::kPanelClass, nullptr);
}
