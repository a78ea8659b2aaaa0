// Reading and steering a list view of another process, by its own messages and memory lent from that process.
#pragma once
#include <windows.h>

#include <string>

namespace list_view {

int rowCount(HWND list);
int columnCount(HWND list);
std::string itemText(HWND list, int row, int column);
int selectedRow(HWND list);  // -1 when none is
void select(HWND list, int row);
RECT rowRect(HWND list, int row);  // on the screen; the label of the first column, made visible first

}  // namespace list_view
