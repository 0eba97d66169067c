// The format that the settings ask for.
#pragma once

#include <windows.h>

struct RecordFormat {
    DWORD dwFormat;             // of the recorder
    const WCHAR* pszExtension;  // without a point
};

// Read anew for each recording.
const RecordFormat& ReadRecordFormat();
