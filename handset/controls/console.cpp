// The command line's output: UTF-8 on the standard handles.
#include "handset/controls/console.h"

#include <windows.h>

#include "handset/base/whole_line.h"
#include "handset/controls/encoding.h"

namespace panel {
namespace {

void Write(DWORD handle, const std::wstring& text) {
    const std::string bytes = Utf8(text) + "\n";
    handset::WriteWhole(GetStdHandle(handle), bytes.data(), bytes.size());
}

class CHandleConsole : public CConsole {
  public:
    void Line(const std::wstring& text) override { Write(STD_OUTPUT_HANDLE, text); }
    void Error(const std::wstring& text) override { Write(STD_ERROR_HANDLE, text); }
};

}  // namespace

CConsole& StandardConsole() {
    static CHandleConsole console;
    return console;
}

int Failure(CConsole& console, const wchar_t* verb, const std::wstring& fault) {
    console.Error(L"handset " + std::wstring(verb) + L": " + fault);
    return kFailed;
}

}  // namespace panel
