#include "tests/bench/program_run.h"
#include "handset/state/process_start.h"

namespace bench {
namespace {

constexpr double kPatience_ms = 30000;

HWND FindWindowOf(DWORD process, const wchar_t* windowClass) {
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, windowClass, nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == process) return window;
    }
    return nullptr;
}

bool HasPainted(HWND window) {
    if (window == nullptr || !IsWindowVisible(window) || GetUpdateRect(window, nullptr, FALSE)) return false;
    // Answered only when the window's thread is back at its loop: everything before has been painted.
    DWORD_PTR ignored = 0;
    return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &ignored) != 0 &&
           !GetUpdateRect(window, nullptr, FALSE);
}

}  // namespace

double Now_ms() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

ProgramRun::ProgramRun(const std::wstring& path, const wchar_t* windowClass) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    std::wstring line = L"\"" + path + L"\"";
    const double start = Now_ms();
    if (!handset::StartProcess(path.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &startup, &m_process)) {
        return;
    }
    while (Now_ms() - start < kPatience_ms) {
        m_window = FindWindowOf(m_process.dwProcessId, windowClass);
        if (HasPainted(m_window)) {
            m_painted_ms = Now_ms() - start;
            return;
        }
        Sleep(1);
    }
}

ProgramRun::~ProgramRun() {
    if (m_process.hProcess == nullptr) return;
    PostMessageW(m_window, WM_CLOSE, 0, 0);
    if (WaitForSingleObject(m_process.hProcess, 10000) != WAIT_OBJECT_0)
        TerminateProcess(m_process.hProcess, 1);
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
}

}  // namespace bench
