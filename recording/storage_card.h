// Where the storage card's files are, while it is in.
#pragma once

#include <windows.h>

inline constexpr WCHAR kStorageCard[] = L"\\Storage Card";
