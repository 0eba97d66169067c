// The log of the tuner device's calls, in the file on the device that the state value "TunerLog" names;
// UTF-8. One line a call: the call with its arguments, " -> ", the result (a failure in hexadecimal), and ":
// " with what the call gave out: "SetChannel 9850 -> 0", "GetSignal -> 0: 45", "Initialize -> 0x80004005".
#pragma once

#include <windows.h>

#include <string>

namespace fm {

// Appends a line and gives the result back. Any thread, any process: one line is one write at the file's end.
// Nothing happens when no log is wanted or the file cannot be opened.
HRESULT LogCall(const std::wstring& call, HRESULT result, const std::wstring& out = L"");

}  // namespace fm
