#include "shell/database_start.h"

namespace {
constexpr WCHAR kDatabaseCommand[] = L"Kora.vol";
}

bool IsDatabaseStart(const WCHAR* commandLine) {
    return commandLine != nullptr && CompareStringW(LOCALE_SYSTEM_DEFAULT, NORM_IGNORECASE, commandLine, -1,
                                                    kDatabaseCommand, -1) == CSTR_EQUAL;
}

void BuildDatabase() {
    // No channel volume is kept yet, so there is nothing to build; the trace says so and the start ends.
    NKDbgPrintfW(L"FM: *** the channel database cannot be built: no channel store\n");
}
