// Telling a window by its class. Host code only.
#pragma once

#include <windows.h>

#include <cwchar>
#include <iterator>

namespace handset {

// Letters count alike in either case, as for the host. A window that is gone has no class.
[[nodiscard]] inline bool HasClass(HWND window, const wchar_t* name) {
    wchar_t actual[64] = L"";
    return GetClassNameW(window, actual, static_cast<int>(std::size(actual))) != 0 &&
           _wcsicmp(actual, name) == 0;
}

}  // namespace handset
