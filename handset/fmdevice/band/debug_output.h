// Lines of the tuner device in the handset's debug output.
#pragma once

#include <windows.h>

#include <string_view>

extern "C" void WINAPIV NKDbgPrintfW(const WCHAR* format, ...);

namespace fm {

// Writes "FM device: ", the text and a line end; a long text in several such lines. Any thread.
void ReportLine(std::string_view utf8);

}  // namespace fm
