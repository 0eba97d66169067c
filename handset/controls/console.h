// What the command line says: lines to standard output and lines to standard error, and how a verb ended.
#pragma once

#include <string>

namespace panel {

class CConsole {
  public:
    virtual ~CConsole() = default;
    // One line without its line end. Any thread.
    virtual void Line(const std::wstring& text) = 0;
    virtual void Error(const std::wstring& text) = 0;
};

// Exit codes of every verb: done, could not be done, not understood.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kBadUsage = 2;

// Writes UTF-8 to the process's standard handles, one write a line.
CConsole& StandardConsole();

// Reports what could not be done. Result: kFailed.
int Failure(CConsole& console, const wchar_t* verb, const std::wstring& fault);

}  // namespace panel
