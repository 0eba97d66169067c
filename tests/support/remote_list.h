// Texts of a list view that belongs to another process.
#pragma once

#include <windows.h>

#include <string>

namespace test {

int RowCount(HWND list);
std::wstring RowText(HWND list, int row, int column);
// Where a row begins, from the list's upper edge.
int RowTop(HWND list, int row);
// The first selected row, -1 when there is none.
int SelectedRow(HWND list);

}  // namespace test
