// This program once more, as a process of its own.
#pragma once

#include <windows.h>

#include <string>

#include "handset/base/owned.h"

namespace panel {

// handset.exe with a verb, such as L"service". `flags`: those of CreateProcessW, DETACHED_PROCESS for one
// that outlives its starter and must not hold its output. `desktop`: "station\desktop" or a desktop's name;
// empty: this process's. The process; none, with the last error, when it could not be started. Any thread.
[[nodiscard]] handset::OwnedHandle StartOwnProgram(const std::wstring& verb, DWORD flags = 0,
                                                   std::wstring desktop = L"");

}  // namespace panel
