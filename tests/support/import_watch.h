// Puts other functions in the place of those that a program's modules import, for DLLs that look at a program
// from inside.
#pragma once

#include <windows.h>

namespace test {

struct InsteadRow {
    const wchar_t* dll;
    const char* name;
    void* instead;
    void** original = nullptr;  // gets the function itself, where the DLL is not one to link with
};

// Whoever calls a row's function by its import from now on calls what stands instead of it: in the modules
// that are loaded and in those that come. `wanted` says of a module whether its imports count; `rows` has
// `count` rows and stays. Safe in DllMain.
void WatchImports(bool (*wanted)(HMODULE module), const InsteadRow* rows, int count);

}  // namespace test
