// What the command line says: lines to standard output and lines to standard error.
#pragma once

#include <string>

namespace panel {

class Console {
  public:
    virtual ~Console() = default;
    // One line without its line end. Any thread.
    virtual void Line(const std::wstring& text) = 0;
    virtual void Error(const std::wstring& text) = 0;
};

// Writes UTF-8 to the process's standard handles, one write a line.
Console& StandardConsole();

}  // namespace panel
