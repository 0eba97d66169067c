// A program started to be measured: when its window had painted, what it used.
#pragma once

#include <windows.h>

#include <string>

namespace bench {

class ProgramRun {
  public:
    // Starts `path`; its first window of the class is awaited.
    ProgramRun(const std::wstring& path, const wchar_t* windowClass);
    // Closes its window and waits for its end.
    ~ProgramRun();
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    // From the start to the moment when the window was shown and had nothing left to paint; negative when
    // that did not come within 30 s.
    double PaintedAfter_ms() const { return m_painted_ms; }
    HWND Window() const { return m_window; }
    HANDLE Process() const { return m_process.hProcess; }

  private:
    PROCESS_INFORMATION m_process = {};
    HWND m_window = nullptr;
    double m_painted_ms = -1;
};

// Milliseconds on a clock of high resolution.
double Now_ms();

}  // namespace bench
