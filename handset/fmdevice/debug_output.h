// Lines of the tuner device in the handset's debug output.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

extern "C" void WINAPIV NKDbgPrintfW(const WCHAR* format, ...);

namespace fm {

// Conversions; what is not well-formed becomes U+FFFD.
[[nodiscard]] std::wstring Wide(std::string_view utf8);
[[nodiscard]] std::string Narrow(std::wstring_view text);

// Writes "FM device: ", the text and a line end. Any thread.
void ReportLine(std::string_view utf8);

}  // namespace fm
