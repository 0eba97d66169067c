#include "shell/instance.h"

#include <aygshell.h>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/ui.h"

namespace {

constexpr int kTitleCapacity = 100;
constexpr DWORD kPowerNameCapacity = 100;

ATOM RegisterMainWindowClass(HINSTANCE hInstance, const WCHAR* className) {
    WNDCLASSW windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = WndProc;
    windowClass.hInstance = hInstance;
    windowClass.hIcon = LoadIconW(hInstance, MAKEINTRESOURCEW(IDI_APP));
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windowClass.lpszClassName = className;
    return RegisterClassW(&windowClass);
}

// The low bit asks the device to bring the window's owned windows forward as well.
HWND WithOwnedWindows(HWND window) {
    return reinterpret_cast<HWND>(reinterpret_cast<UINT_PTR>(window) | 1);
}

// A booked recording wins over a session that is already running. The message is sent, not posted: when it
// returns, the running radio has let go of the tuner.
void CloseRunningInstance(HWND running) {
    WCHAR name[kPowerNameCapacity] = L"";
    DWORD flags = 0;
    GetSystemPowerState(name, kPowerNameCapacity, &flags);
    if (flags == POWER_STATE_UNATTENDED) SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
    SendMessageW(running, WM_CLOSE, 0, 0);
}

bool IsScheduledStart() {
    return g_app.pMainState != nullptr && g_app.pMainState->m_request.uRecord != 0;
}

}  // namespace

BOOL InitInstance(HINSTANCE hInstance, int nCmdShow) {
    g_app.hInstance = hInstance;
    SHInitExtraControls();

    WCHAR title[kTitleCapacity] = L"";
    LoadStringW(hInstance, IDS_APP_TITLE, title, kTitleCapacity);

    if (const HWND running = FindWindowW(kMainWindowClass, title)) {
        NKDbgPrintfW(L"FM is exist.szWindowClass : %.90s", kMainWindowClass);
        if (!IsScheduledStart()) {
            SetForegroundWindow(WithOwnedWindows(running));
            return FALSE;
        }
        CloseRunningInstance(running);
    }

    if (RegisterMainWindowClass(hInstance, kMainWindowClass) == 0) return FALSE;
    const HWND window =
        CreateWindowExW(0, kMainWindowClass, title, WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, nullptr, nullptr, hInstance, g_app.pMainState);
    if (window == nullptr) return FALSE;
    ShowWindow(window, nCmdShow);
    UpdateWindow(window);
    return TRUE;
}
