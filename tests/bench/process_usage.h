// What a running program has used: processor time and private memory. Windows tells it; Wine answers 0 for
// another program, so there the figures are read from the Linux process behind it.
#pragma once

#include <windows.h>

#include <string>

namespace bench {

class ProcessUsage {
  public:
    // `path`: the program's file, by which the Linux process is found.
    ProcessUsage(HANDLE process, const std::wstring& path);

    // User and kernel time so far; negative when nobody tells.
    double Cpu_ms() const;
    // Memory that no other program shares; negative when nobody tells.
    double Private_MB() const;

  private:
    HANDLE m_process;
    std::wstring m_procFolder;  // "Z:\proc\123" under Wine, else empty
};

}  // namespace bench
