// The debug output and the console of the device: NKDbgPrintfW goes to standard error in UTF-8, printf to
// standard output. One call is one write, so lines of several threads and programs never mix.
#include <windows.h>

#include <cstdarg>
#include <cstdio>
#include <cwchar>
#include <string>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/base/whole_line.h"
#include "handset/coredll/kernel/call_guard.h"

namespace {

// The device writes fewer than 128 characters a call. What is longer is cut.
constexpr std::size_t kMostCharacters = 127;
constexpr std::size_t kLongestUtf8 = 3;  // bytes of one of them

}  // namespace

COREDLL_EXPORT void WINAPIV NKDbgPrintfW(const WCHAR* format, ...) try {
    const coredll::CCallGuard guard;
    const handset::CKeptLastError kept;
    // With a terminator that a longer line does not reach.
    WCHAR text[kMostCharacters + 1] = L"";
    va_list arguments;
    va_start(arguments, format);
    _vsnwprintf(text, kMostCharacters, format, arguments);
    va_end(arguments);
    // Nothing of the heap: the line may be what tells that there is none left.
    char bytes[kMostCharacters * kLongestUtf8];
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, static_cast<int>(std::wcslen(text)), bytes,
                                         sizeof bytes, nullptr, nullptr);
    handset::WriteWhole(GetStdHandle(STD_ERROR_HANDLE), bytes, static_cast<std::size_t>(size));
} catch (...) {
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT int WINAPIV ConsolePrintf(const char* format, ...) try {
    const coredll::CCallGuard guard;
    const handset::CKeptLastError kept;
    va_list arguments;
    va_start(arguments, format);
    va_list counted;
    va_copy(counted, arguments);
    const int length = _vscprintf(format, counted);
    va_end(counted);
    if (length >= 0) {
        std::string text(static_cast<std::size_t>(length) + 1, '\0');
        _vsnprintf(text.data(), text.size(), format, arguments);
        handset::WriteWhole(GetStdHandle(STD_OUTPUT_HANDLE), text.data(), static_cast<std::size_t>(length));
    }
    va_end(arguments);
    return length;
} catch (...) {
    return handset::EdgeAnswer(-1);
}
