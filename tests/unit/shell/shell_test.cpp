#include "tests/unit/shell/shell_test.h"

#include <algorithm>

namespace test {
namespace {

constexpr WCHAR kClass[] = L"ShellTestWindow";
ShellTest* g_test = nullptr;

bool IsOfInterest(UINT message) {
    return message >= WM_USER || message == WM_CLOSE || message == WM_COMMAND;
}

}  // namespace

ShellTest::ShellTest() {
    g_app = {};
    g_app.hInstance = GetModuleHandleW(nullptr);
    SkinTables empty = {};
    state = new CMainState(g_app.hInstance, empty);
    g_app.pMainState = state;
    g_app.pFMDevice = &device;

    g_test = this;
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = Proc;
    windowClass.hInstance = g_app.hInstance;
    windowClass.lpszClassName = kClass;
    RegisterClassW(&windowClass);
    window =
        CreateWindowExW(0, kClass, L"", WS_POPUP, 0, 0, 240, 320, nullptr, nullptr, g_app.hInstance, nullptr);
    state->m_hListView = CreateWindowExW(0, L"SysListView32", L"", WS_CHILD, 0, 0, 10, 10, window, nullptr,
                                         g_app.hInstance, nullptr);
}

ShellTest::~ShellTest() {
    g_test = nullptr;
    if (IsWindow(window)) DestroyWindow(window);
    CloseHandle(state->m_hStopRecordEvent);
    delete state;
    g_app = {};
}

bool ShellTest::HasSeen(UINT message) const {
    return std::any_of(m_seen.begin(), m_seen.end(),
                       [message](const SeenMessage& seen) { return seen.message == message; });
}

void ShellTest::ShowWithList() const {
    ShowWindow(state->m_hListView, SW_SHOW);
    ShowWindow(window, SW_SHOW);
    SetActiveWindow(window);
    SetFocus(window);
}

DWORD ShellTest::StateDword(const WCHAR* name) {
    DWORD value = 0, size = sizeof value;
    WCHAR key[MAX_PATH] = L"";
    GetEnvironmentVariableW(L"KORA_STATEKEY", key, MAX_PATH);
    RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_REG_DWORD, nullptr, &value, &size);
    return value;
}

LRESULT CALLBACK ShellTest::Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (g_test != nullptr && IsOfInterest(message)) {
        g_test->m_seen.push_back({message, wParam, lParam, GetTickCount()});
        if (g_test->onMessage) g_test->onMessage(message);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

Worker::Worker(HANDLE stopEvent)
    : m_stop(stopEvent), m_thread(CreateThread(nullptr, 0, Run, this, 0, nullptr)) {}

DWORD WINAPI Worker::Run(LPVOID worker) {
    auto& self = *static_cast<Worker*>(worker);
    while (WaitForSingleObject(self.m_stop, 1) == WAIT_TIMEOUT) InterlockedIncrement(&self.m_rounds);
    return 0;
}

bool Worker::KeepsRunning() const {
    const long before = m_rounds;
    return WaitFor([&] { return m_rounds > before + 2; }, 500);
}

}  // namespace test
