#include "shell/database_start.h"

#include "channels/channel_db.h"

namespace {
constexpr WCHAR kDatabaseCommand[] = L"Kora.vol";
}

bool IsDatabaseStart(const WCHAR* commandLine) {
    return commandLine != nullptr && CompareStringW(LOCALE_SYSTEM_DEFAULT, NORM_IGNORECASE, commandLine, -1,
                                                    kDatabaseCommand, -1) == CSTR_EQUAL;
}

void BuildDatabase() {
    CChannelDB database;
    database.CEDB_BuildFromRegistry();
}
