#include "tests/support/radio.h"

#include <gtest/gtest.h>

#include "handset/state/process_start.h"
#include "tests/support/wait.h"

namespace test {
namespace {

constexpr DWORD kAnswerWithin_ms = 20000;

HANDLE LogFile(const std::wstring& path) {
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    return CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                       OPEN_ALWAYS, 0, nullptr);
}

struct Search {
    DWORD process;
    const wchar_t* className;
    const wchar_t* title;  // null: any
    HWND found;
};

BOOL CALLBACK Match(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    WCHAR name[64] = L"", title[128] = L"";
    GetClassNameW(window, name, 64);
    InternalGetWindowText(window, title, 128);
    const bool named = search.title == nullptr || wcscmp(title, search.title) == 0;
    if (process != search.process || wcscmp(name, search.className) != 0 || !named) return TRUE;
    search.found = window;
    return FALSE;
}

LPARAM Point(int x, int y) {
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

}  // namespace

Radio::Radio(HandsetUnderTest& handset, const std::wstring& arguments) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdError = LogFile(handset.TraceFile());
    startup.hStdOutput = LogFile(handset.ConsoleFile());
    const std::wstring program = handset.DevicePath(L"\\Windows\\UI.exe");
    std::wstring line = L"\"" + program + L"\"" + (arguments.empty() ? L"" : L" " + arguments);
    const BOOL started = handset::StartProcess(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0,
                                               nullptr, nullptr, &startup, &m_process);
    EXPECT_TRUE(started) << "UI.exe did not start: error " << GetLastError();
    CloseHandle(startup.hStdError);
    CloseHandle(startup.hStdOutput);
}

Radio::Radio(HWND window) {
    m_process.dwThreadId = GetWindowThreadProcessId(window, &m_process.dwProcessId);
    m_process.hProcess = OpenProcess(PROCESS_ALL_ACCESS, FALSE, m_process.dwProcessId);
    m_process.hThread = OpenThread(SYNCHRONIZE, FALSE, m_process.dwThreadId);
}

Radio::~Radio() {
    // A program that counts which of its lines run writes that down only when it ends by itself.
    if (Runs() && GetEnvironmentVariableW(L"GCOV_PREFIX", nullptr, 0) != 0) {
        PostMessageW(Window(), WM_CLOSE, 0, 0);
        WaitUntilGone(5000);
    }
    if (Runs()) {
        TerminateProcess(m_process.hProcess, 99);
        WaitForSingleObject(m_process.hProcess, 5000);
    }
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
}

bool Radio::Runs() const {
    return WaitForSingleObject(m_process.hProcess, 0) == WAIT_TIMEOUT;
}

bool Radio::WaitUntilGone(DWORD deadline_ms) const {
    return WaitFor([this] { return !Runs(); }, deadline_ms);
}

DWORD Radio::ExitCode() const {
    DWORD code = ~0u;
    GetExitCodeProcess(m_process.hProcess, &code);
    return code;
}

HWND Radio::Window() const {
    Search search = {m_process.dwProcessId, L"Kora", nullptr, nullptr};
    EnumWindows(Match, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void Radio::WaitUntilShown() {
    ASSERT_TRUE(WaitFor([this] { return Window() != nullptr && IsWindowVisible(Window()); }))
        << "the main window did not appear";
    ASSERT_TRUE(WaitFor([this] { return !GetUpdateRect(Window(), nullptr, FALSE); }));
}

HWND Radio::ListView() const {
    return FindWindowExW(Window(), nullptr, L"SysListView32", nullptr);
}
HWND Radio::MenuBar() const {
    return FindWindowExW(Window(), nullptr, L"menu_worker", nullptr);
}

void Radio::Press(int x, int y) const {
    PostMessageW(Window(), WM_LBUTTONDOWN, MK_LBUTTON, Point(x, y));
}
void Radio::MoveTo(int x, int y) const {
    PostMessageW(Window(), WM_MOUSEMOVE, MK_LBUTTON, Point(x, y));
}
void Radio::Lift(int x, int y) const {
    PostMessageW(Window(), WM_LBUTTONUP, 0, Point(x, y));
}

void Radio::Tap(int x, int y) const {
    Press(x, y);
    Lift(x, y);
}

void Radio::Key(WPARAM virtualKey) const {
    PostMessageW(Window(), WM_KEYDOWN, virtualKey, 1);
    PostMessageW(Window(), WM_KEYUP, virtualKey, 1);
}

void Radio::Type(const std::string& digits) const {
    for (const char digit : digits) Key(static_cast<WPARAM>(digit));
}

void Radio::Command(WORD id) const {
    PostMessageW(Window(), WM_COMMAND, id, 0);
}

void Radio::Shortcut(WORD id) const {
    PostMessageW(Window(), WM_COMMAND, MAKEWPARAM(id, 1), 0);
}

LRESULT Radio::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    DWORD_PTR result = 0;
    EXPECT_NE(SendMessageTimeoutW(Window(), message, wParam, lParam, SMTO_NORMAL, kAnswerWithin_ms, &result),
              0)
        << "no answer to message 0x" << std::hex << message;
    return static_cast<LRESULT>(result);
}

HWND Radio::Box(const wchar_t* caption) const {
    return BoxOf(m_process.dwProcessId, caption);
}

HWND Radio::BoxOf(DWORD process, const wchar_t* caption) {
    Search search = {process, L"#32770", caption, nullptr};
    EnumWindows(Match, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND Radio::WaitForBox(const wchar_t* caption) const {
    WaitFor([&] { return Box(caption) != nullptr && IsWindowVisible(Box(caption)); });
    return Box(caption);
}

std::wstring Radio::BoxText(HWND box) {
    std::wstring text;
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        WCHAR name[32] = L"", part[512] = L"";
        GetClassNameW(child, name, 32);
        if (_wcsicmp(name, L"Static") != 0) continue;
        SendMessageW(child, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(part));
        text += part;
    }
    return text;
}

void Radio::Answer(HWND box, int button) {
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

COLORREF Radio::Pixel(int x, int y) const {
    POINT point = {x, y};
    ClientToScreen(Window(), &point);
    const HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, point.x, point.y);
    ReleaseDC(nullptr, screen);
    return colour;
}

}  // namespace test
