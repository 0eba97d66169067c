// Texts of a list view that belongs to another process.
#pragma once

#include <windows.h>

#include <string>

namespace test {

int RowCount(HWND list);
std::wstring RowText(HWND list, int row, int column);
// The first selected row, -1 when there is none.
int SelectedRow(HWND list);

}  // namespace test
