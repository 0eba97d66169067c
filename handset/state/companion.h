// A DLL that measures or checks the programs of a handset from inside. No program needs one.
#pragma once

#include <windows.h>

namespace handset {

// Loads the DLL that the environment names in KORA_COMPANION, a whole host path; null when there is none or
// it does not load. Safe while the program's own modules are being loaded, as long as the companion needs
// none of them.
inline HMODULE LoadCompanion() {
    WCHAR file[MAX_PATH];
    const DWORD length = GetEnvironmentVariableW(L"KORA_COMPANION", file, MAX_PATH);
    return length != 0 && length < MAX_PATH ? LoadLibraryW(file) : nullptr;
}

}  // namespace handset
