// Stands in for the radio in the panel's tests: a window of the radio's class that fills the display below
// the shell's bar and writes down, a line each, what reaches it. "exit N" as its command line makes it end at
// once with N, "slow …" take its time with its window, and "deaf" not close.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>

#include "handset/state/handset_protocol.h"
#include "handset/state/own_windows.h"

namespace {

std::wstring g_log;
UINT g_softKeyMessage;
HWND g_child;
bool g_deaf;

void Note(const char* format, ...) {
    char line[256];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    // Two that are started together write together, and Wine finds a file's end before it writes there: one
    // line would lie upon the other.
    const HANDLE turn = CreateMutexW(nullptr, FALSE, L"KoraStandInNotes");
    WaitForSingleObject(turn, INFINITE);
    const HANDLE file =
        CreateFileW(g_log.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, line, static_cast<DWORD>(length), &written, nullptr);
    CloseHandle(file);
    ReleaseMutex(turn);
    CloseHandle(turn);
}

POINT AskForDisplay() {
    DWORD_PTR origin = 0;
    const HWND phone = handset::FindOwnWindow(handset::kPanelClass);
    if (phone != nullptr) {
        SendMessageTimeoutW(phone, RegisterWindowMessageW(handset::kDisplayOriginMessage), 0, 0,
                            SMTO_ABORTIFHUNG, 2000, &origin);
    }
    return {static_cast<SHORT>(LOWORD(origin)), static_cast<SHORT>(HIWORD(origin))};
}

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const char* name = window == g_child ? "child" : "main";
    if (message == g_softKeyMessage) Note("softkey %d\n", static_cast<int>(wParam));
    if (message == WM_KEYDOWN) Note("%s keydown %d\n", name, static_cast<int>(wParam));
    if (message == WM_KEYUP) Note("%s keyup %d\n", name, static_cast<int>(wParam));
    if (message == WM_LBUTTONDOWN) Note("%s down %d %d\n", name, LOWORD(lParam), HIWORD(lParam));
    if (message == WM_LBUTTONUP) Note("%s up %d %d\n", name, LOWORD(lParam), HIWORD(lParam));
    if (message == 0xA402) Note("bluetooth %d\n", static_cast<int>(wParam));
    if (message == WM_SETTINGCHANGE && wParam == handset::kSettingChangeReset) Note("turned\n");
    if (message == WM_ACTIVATE && window != g_child) Note("activate %d\n", LOWORD(wParam));
    // As the radio gives its list the focus: each activation, whenever the host makes one, gives it to the
    // window.
    if (message == WM_SETFOCUS && window != g_child && g_child != nullptr) SetFocus(g_child);
    if (message == WM_CLOSE && g_deaf) return 0;
    if (message == WM_DESTROY && window != g_child) PostQuitMessage(5);
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR commandLine, int) {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    g_log = std::wstring(program) + L".log";
    Note("command line [%ls]\n", commandLine);
    int code = 0;
    if (std::swscanf(commandLine, L"exit %d", &code) == 1) return code;
    const bool slow = std::wcsncmp(commandLine, L"slow", 4) == 0;
    g_deaf = std::wcscmp(commandLine, L"deaf") == 0;
    if (slow) Sleep(1000);

    g_softKeyMessage = RegisterWindowMessageW(handset::kSoftKeyMessage);
    for (const wchar_t* name : {L"Kora", handset::kMenuBarClass}) {
        WNDCLASSW type = {};
        type.lpfnWndProc = WindowProc;
        type.hInstance = instance;
        type.lpszClassName = name;
        type.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
        RegisterClassW(&type);
    }
    handset::JoinHandset();
    if (slow) Note("window [%ls]\n", commandLine);
    const POINT display = AskForDisplay();
    const HWND window =
        CreateWindowExW(0, L"Kora", L"stand-in", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, display.x,
                        display.y + 26, 240, 294, nullptr, nullptr, instance, nullptr);
    g_child = CreateWindowExW(0, L"menu_worker", L"", WS_CHILD | WS_VISIBLE, 0, 268, 240, 26, window, nullptr,
                              instance, nullptr);
    SetForegroundWindow(window);
    SetFocus(g_child);
    Note("ready\n");
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return static_cast<int>(message.wParam);
}
