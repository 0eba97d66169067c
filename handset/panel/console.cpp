// The command line's output: UTF-8 on the standard handles.
#include "handset/panel/console.h"

#include <windows.h>

#include "handset/base/whole_line.h"
#include "handset/panel/encoding.h"

namespace panel {
namespace {

void Write(DWORD handle, const std::wstring& text) {
    const std::string bytes = Utf8(text) + "\n";
    handset::WriteWhole(GetStdHandle(handle), bytes.data(), bytes.size());
}

class HandleConsole : public Console {
  public:
    void Line(const std::wstring& text) override { Write(STD_OUTPUT_HANDLE, text); }
    void Error(const std::wstring& text) override { Write(STD_ERROR_HANDLE, text); }
};

}  // namespace

Console& StandardConsole() {
    static HandleConsole console;
    return console;
}

}  // namespace panel
