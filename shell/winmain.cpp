// The program's entry: decides whether the radio may start at all, makes the main state object, and runs the
// message loop.
#include <windows.h>

#include <new>

#include "resources/resource_ids.h"
#include "schedule/command_line.h"
#include "shell/app_block.h"
#include "shell/database_start.h"
#include "shell/headset.h"
#include "shell/instance.h"
#include "shell/main_state.h"

namespace {

constexpr WCHAR kCameraWindowClass[] = L"Digital Camera";

// The camera application holds the sound path that the radio needs; the radio never yields to it.
void CloseCamera() {
    const HWND camera = FindWindowW(kCameraWindowClass, nullptr);
    if (camera == nullptr) return;
    NKDbgPrintfW(L" ** FM start to work and to CLOSE Camera **\r\n");
    SendMessageW(camera, WM_CLOSE, 0, 0);
}

int RunMessageLoop(HINSTANCE hInstance) {
    const HACCEL accelerators = LoadAcceleratorsW(hInstance, MAKEINTRESOURCEW(IDA_MAIN));
    MSG msg = {};
    while (GetMessageW(&msg, nullptr, 0, 0)) {
        if (TranslateAcceleratorW(msg.hwnd, accelerators, &msg)) continue;
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    NKDbgPrintfW(L"FM: Program Terminated.\n");
    return static_cast<int>(msg.wParam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE, LPWSTR lpCmdLine, int nCmdShow) {
    g_app.hInstance = hInstance;
    if (IsHeadsetMissing()) {
        ShowHeadsetWarning();
        return 0;
    }
    g_app.pMainState = new (std::nothrow) CMainState(hInstance, MainScreenTables());
    CloseCamera();

    // The parser cuts its text into tokens, so whether the line asks for a database is settled first.
    const bool databaseStart = IsDatabaseStart(lpCmdLine);
    if (lpCmdLine != nullptr && g_app.pMainState != nullptr) {
        ParseCommandLine(lpCmdLine, &g_app.pMainState->m_request);
    }
    if (databaseStart) {
        BuildDatabase();
        return 0;
    }
    if (!InitInstance(hInstance, nCmdShow)) return 0;
    return RunMessageLoop(hInstance);
}
