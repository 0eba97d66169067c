// The dialog that lists the alternative frequencies of the tuned station, measures them and tunes to one.
#pragma once

#include <windows.h>

#include <cstdint>

// Modal; gives 1 after OK and IDC_AF_CLOSE after that command.
INT_PTR ShowAFList(HWND owner);

// Which of the seven pictures (0 to 6) shows a signal level; a negative level is the lowest.
int AFSignalGrade(std::int32_t level);
