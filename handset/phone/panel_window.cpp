// The panel's window procedure.
#include "handset/phone/panel_window.h"

#include <algorithm>

#include "handset/controls/handset_desktop.h"
#include "handset/controls/own_program.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/radio_windows.h"
#include "handset/controls/switches.h"
#include "handset/service/booking_service.h"
#include "handset/service/booking_store.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

constexpr wchar_t kDarknessClass[] = L"KoraHandsetDarkness";
// Without a frame: the phone is the window, and is moved by its body.
constexpr DWORD kStyle = WS_POPUP | WS_SYSMENU;
// Never active: a press of its keys leaves the radio the active window.
constexpr DWORD kExtendedStyle = WS_EX_NOACTIVATE | WS_EX_APPWINDOW;
constexpr UINT_PTR kTickTimer = 1;
constexpr UINT kTickPeriod_ms = 200;

// The display takes no stylus while it is dark, and the radio under it stays the active window.
LRESULT CALLBACK DarknessProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_MOUSEACTIVATE ? MA_NOACTIVATE : DefWindowProcW(window, message, wParam, lParam);
}

void RegisterClasses(HINSTANCE instance, WNDPROC procedure) {
    WNDCLASSW panel = {};
    panel.lpfnWndProc = procedure;
    panel.hInstance = instance;
    panel.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    panel.lpszClassName = handset::kPanelClass;
    RegisterClassW(&panel);
    WNDCLASSW darkness = {};
    darkness.lpfnWndProc = DarknessProc;
    darkness.hInstance = instance;
    darkness.hCursor = panel.hCursor;
    darkness.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    darkness.lpszClassName = kDarknessClass;
    RegisterClassW(&darkness);
}

// Where it was put last, or else in the middle.
POINT FirstPlace(const PhoneLayout& phone) {
    const auto x = handset::StateQword(kPlaceX);
    const auto y = handset::StateQword(kPlaceY);
    if (x && y) return {static_cast<LONG>(*x), static_cast<LONG>(*y)};
    return {std::max(0, (GetSystemMetrics(SM_CXSCREEN) - phone.width) / 2),
            std::max(0, (GetSystemMetrics(SM_CYSCREEN) - phone.height) / 2)};
}

// Whoever puts the phone away with recordings booked would wait for them in vain.
void OfferService() {
    if (ReadBookings().bookings.empty() || ServiceRuns()) return;
    const int answer =
        MessageBoxW(nullptr,
                    L"Recordings are booked. They are made only while the phone is open or its "
                    L"service runs.\n\nStart the service now? It waits without a window; "
                    L"\"handset service stop\" ends it.",
                    L"Kora handset", MB_YESNO | MB_ICONQUESTION | MB_SETFOREGROUND);
    if (answer != IDYES) return;
    // Not the desktop that was made for the phone: it closes with the last program on it.
    if (StartOwnProgram(L"service", DETACHED_PROCESS, L"WinSta0\\Default")) return;
    MessageBoxW(nullptr, L"The service could not be started; nothing will be recorded.", L"Kora handset",
                MB_ICONEXCLAMATION | MB_SETFOREGROUND);
}

}  // namespace

struct CPanelWindow::MessageRow {
    UINT message;
    LRESULT (CPanelWindow::*handler)(WPARAM wParam, LPARAM lParam);
};

bool CPanelWindow::Open(HINSTANCE instance) {
    displayOriginMessage_ = RegisterWindowMessageW(handset::kDisplayOriginMessage);
    stateChangedMessage_ = RegisterWindowMessageW(kStateChangedMessage);
    RegisterClasses(instance, WindowProc);
    view_.now = TakeSnapshot();
    view_.band = band_.Look(view_.now.radio);
    view_.phone = LayOutPhone(view_.now.screenWidth, view_.now.screenHeight);
    view_.column = LayOutColumn(view_.phone.column);
    picture_.Make(view_);
    const POINT place = FirstPlace(view_.phone);
    CreateWindowExW(kExtendedStyle, handset::kPanelClass, L"Kora handset", kStyle, place.x, place.y,
                    view_.phone.width, view_.phone.height, nullptr, nullptr, instance, this);
    if (window_ == nullptr) return false;
    KeepOnScreen();
    hints_.Fit(window_, view_);
    darkness_ = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | WS_EX_TOPMOST, kDarknessClass, L"",
                                WS_POPUP, 0, 0, 0, 0, window_, nullptr, instance, nullptr);
    ShowWindow(window_, SW_SHOWNOACTIVATE);
    keyboard_.emplace(
        [](const ComputerKey& key, void* panel) { return static_cast<CPanelWindow*>(panel)->TakeKey(key); },
        this);
    SetTimer(window_, kTickTimer, kTickPeriod_ms, nullptr);
    Refresh();
    return true;
}

bool CPanelWindow::Run() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return putAway_;
}

LRESULT CALLBACK CPanelWindow::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<CPanelWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<CPanelWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self != nullptr ? self->Handle(message, wParam, lParam)
                           : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CPanelWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    static constexpr MessageRow kRows[] = {
        {WM_PAINT, &CPanelWindow::OnPaint},
        {WM_ERASEBKGND, &CPanelWindow::OnEraseBackground},
        {WM_MOUSEACTIVATE, &CPanelWindow::OnMouseActivate},
        {WM_LBUTTONDOWN, &CPanelWindow::OnPress},
        {WM_LBUTTONDBLCLK, &CPanelWindow::OnPress},
        {WM_MOUSEMOVE, &CPanelWindow::OnStylusMove},
        {WM_LBUTTONUP, &CPanelWindow::OnLetGo},
        {WM_CAPTURECHANGED, &CPanelWindow::OnCaptureLost},
        {WM_TIMER, &CPanelWindow::OnTimer},
        {WM_MOVE, &CPanelWindow::OnMoved},
        {WM_DISPLAYCHANGE, &CPanelWindow::OnDesktopChanged},
        {kKeyMessage, &CPanelWindow::OnComputerKey},
        {WM_CLOSE, &CPanelWindow::OnClose},
        {WM_DESTROY, &CPanelWindow::OnDestroy},
    };
    for (const MessageRow& row : kRows) {
        if (row.message == message) return (this->*row.handler)(wParam, lParam);
    }
    if (message == displayOriginMessage_) {
        const RECT display = DisplayOnScreen();
        return 0x100000000LL | static_cast<DWORD>(MAKELONG(display.left, display.top));
    }
    if (message == stateChangedMessage_) {
        Refresh();
        return 1;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

RECT CPanelWindow::DisplayOnScreen() const {
    POINT corner = {view_.phone.display.x, view_.phone.display.y};
    ClientToScreen(window_, &corner);
    return {corner.x, corner.y, corner.x + view_.phone.display.w, corner.y + view_.phone.display.h};
}

LRESULT CPanelWindow::OnPaint(WPARAM, LPARAM) {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window_, &paint);
    if (stale_) picture_.Make(view_);
    stale_ = false;
    picture_.Show(dc, paint.rcPaint);
    EndPaint(window_, &paint);
    return 0;
}

LRESULT CPanelWindow::OnEraseBackground(WPARAM, LPARAM) {
    return 1;
}  // the picture covers everything

LRESULT CPanelWindow::OnMouseActivate(WPARAM, LPARAM) {
    return MA_NOACTIVATE;
}

LRESULT CPanelWindow::OnTimer(WPARAM timer, LPARAM) {
    if (timer == kTickTimer) {
        Refresh();
    } else {
        RepeatKey();
    }
    return 0;
}

LRESULT CPanelWindow::OnMoved(WPARAM, LPARAM) {
    follow_.Follow(window_, DisplayOnScreen());
    ShowDarkness();
    return 0;
}

LRESULT CPanelWindow::OnClose(WPARAM, LPARAM) {
    // A handset that is put away is switched off.
    AskRadioToClose();
    keyboard_.reset();
    DestroyWindow(window_);
    return 0;
}

LRESULT CPanelWindow::OnDestroy(WPARAM, LPARAM) {
    PostQuitMessage(0);
    return 0;
}

void CPanelWindow::Refresh() {
    const Snapshot before = view_.now;
    const BandShown bandBefore = view_.band;
    view_.now = TakeSnapshot();
    view_.band = band_.Look(view_.now.radio);
    if (before.screenWidth != view_.now.screenWidth || before.screenHeight != view_.now.screenHeight)
        FitToScreen();
    HoldKeyboard(before.radio);
    if (!(before == view_.now) || !(bandBefore == view_.band)) Redraw();
    const RECT display = DisplayOnScreen();
    follow_.Follow(window_, display);
    const HWND radio = RadioMainWindow();
    follow_.OpenDisplay(window_, radio != nullptr && IsWindowVisible(radio), display);
    ShowDarkness();
}

void CPanelWindow::Redraw() {
    // Made when it is painted, once for all that has changed by then.
    stale_ = true;
    InvalidateRect(window_, nullptr, FALSE);
}

void CPanelWindow::FitToScreen() {
    view_.phone = LayOutPhone(view_.now.screenWidth, view_.now.screenHeight);
    view_.column = LayOutColumn(view_.phone.column);
    // Turned about its middle, as in a hand.
    RECT before = {};
    GetWindowRect(window_, &before);
    const int x = before.left + (before.right - before.left - view_.phone.width) / 2;
    const int y = before.top + (before.bottom - before.top - view_.phone.height) / 2;
    if (view_.phone.width > GetSystemMetrics(SM_CXVIRTUALSCREEN) ||
        view_.phone.height > GetSystemMetrics(SM_CYVIRTUALSCREEN)) {
        GrowHandsetDesktop(view_.phone.width, view_.phone.height);
    }
    SetWindowPos(window_, nullptr, x, y, view_.phone.width, view_.phone.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    KeepOnScreen();
    hints_.Fit(window_, view_);
}

void CPanelWindow::KeepOnScreen() {
    RECT place = {};
    GetWindowRect(window_, &place);
    // Where it is larger than the host's screen, its switches are what stays there: they stand at its right,
    // or at its foot.
    const LONG left = GetSystemMetrics(SM_XVIRTUALSCREEN);
    const LONG top = GetSystemMetrics(SM_YVIRTUALSCREEN);
    const LONG right = left + GetSystemMetrics(SM_CXVIRTUALSCREEN);
    const LONG bottom = top + GetSystemMetrics(SM_CYVIRTUALSCREEN);
    const auto kept = [](LONG at, LONG size, LONG low, LONG high, bool endStays) {
        if (size > high - low) return endStays ? high - size : low;
        return std::clamp(at, low, high - size);
    };
    const bool flat = view_.phone.landscape;
    const LONG x = kept(place.left, place.right - place.left, left, right, !flat);
    const LONG y = kept(place.top, place.bottom - place.top, top, bottom, flat);
    if (x == place.left && y == place.top) return;
    SetWindowPos(window_, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CPanelWindow::OnDesktopChanged(WPARAM, LPARAM) {
    KeepOnScreen();
    return 0;
}

void CPanelWindow::ShowDarkness() {
    if (darkness_ == nullptr) return;
    const bool dark = !view_.now.lit && view_.now.radio;
    const RECT d = DisplayOnScreen();
    const UINT flags = SWP_NOACTIVATE | (dark ? SWP_SHOWWINDOW : SWP_HIDEWINDOW);
    RECT place = {};
    GetWindowRect(darkness_, &place);
    if (!dark && !IsWindowVisible(darkness_)) return;
    if (dark && IsWindowVisible(darkness_) && EqualRect(&place, &d)) return;
    SetWindowPos(darkness_, HWND_TOPMOST, d.left, d.top, d.right - d.left, d.bottom - d.top, flags);
}

int RunPanel(bool withRadio) {
    CPanelWindow window;
    if (!window.Open(GetModuleHandleW(nullptr))) return 1;
    // Without a word when it does not start: the panel then shows that the radio is off. One that is coming,
    // such as a booked one, is not waited for: it is the radio on this phone.
    if (withRadio && !RadioProcess()) LaunchRadio(L"", RadioConsole::kOutput, 0);
    bool putAway = false;
    {
        const CBackgroundService service(StandardConsole());
        putAway = window.Run();
    }
    if (putAway) OfferService();
    return 0;
}

}  // namespace panel
