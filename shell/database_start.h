// The start that only builds the channel volume from the preset favourites and ends.
#pragma once

#include <windows.h>

// True when the whole command line is "Kora.vol", in any letter case. Null is not.
[[nodiscard]] bool IsDatabaseStart(const WCHAR* commandLine);

// Builds the volume and reports the outcome.
void BuildDatabase();
