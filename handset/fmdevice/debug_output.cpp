// Lines of the tuner device in the handset's debug output.
#include "handset/fmdevice/debug_output.h"

namespace fm {

std::wstring Wide(std::string_view utf8) {
    const int length =
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), text.data(), length);
    return text;
}

std::string Narrow(std::wstring_view text) {
    const int wide = static_cast<int>(text.size());
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), wide, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), wide, utf8.data(), length, nullptr, nullptr);
    return utf8;
}

void ReportLine(std::string_view utf8) {
    NKDbgPrintfW(L"FM device: %s\n", Wide(utf8).c_str());
}

}  // namespace fm
