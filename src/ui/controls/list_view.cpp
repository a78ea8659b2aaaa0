#include "ui/controls/list_view.h"

#include <algorithm>

namespace pelvaro {

void ListView::setItems(std::vector<std::string> items) {
  touch();
  items_ = std::move(items);
  cells_ = nullptr;
  selectRow(-1);
  if (peer()) peer()->setRowCount(count());
}

void ListView::removeItem(int row) {
  touch();
  if (cells_ || row < 0 || row >= count()) return;
  items_.erase(items_.begin() + row);
  selectRow(-1);
  if (peer()) peer()->setRowCount(count());
}

int ListView::count() {
  touch();
  return cells_ ? cellRows_ : static_cast<int>(items_.size());
}

const std::string& ListView::itemText(int row) {
  static const std::string none;
  if (row < 0 || row >= count()) return none;
  if (!cells_) return items_[static_cast<std::size_t>(row)];
  asked_ = itemText(row, 0);
  return asked_;
}

void ListView::setColumns(std::vector<ListColumn> newColumns) {
  if (columns() == newColumns) return;
  columns_ = std::move(newColumns);
  if (peer()) peer()->setColumns(columns_);
}

const std::vector<ListColumn>& ListView::columns() {
  touch();
  return columns_;
}

void ListView::setRows(int rows, CellSource cells) {
  touch();
  items_.clear();
  cells_ = std::move(cells);
  cellRows_ = cells_ ? rows : 0;
  selectRow(-1);
  if (!peer()) return;
  peer()->setRowCount(count());
  if (cellRows_ == 0) return;
  // Which scrolls to the beginning. A detour by no rows would do so too, but it draws the scroll bars twice.
  peer()->selectRow(0);
  peer()->selectRow(-1);
}

void ListView::refresh() {
  touch();
  if (peer()) peer()->setRowCount(count());
}

std::string_view ListView::itemText(int row, int column) {
  const auto columnCount = std::max(1, static_cast<int>(columns().size()));
  if (row < 0 || row >= count() || column < 0 || column >= columnCount) return {};
  if (cells_) return cells_(row, column);
  return column == 0 ? std::string_view(items_[static_cast<std::size_t>(row)]) : std::string_view{};
}

int ListView::selectedRow() {
  touch();
  if (peer()) selected_ = peer()->selectedRow();
  return selected_ < count() ? selected_ : -1;
}

void ListView::selectRow(int row) {
  touch();
  selected_ = row;
  if (peer()) peer()->selectRow(row);
}

void ListView::chooseRow(int row) {
  if (row < 0 || row >= count()) return;
  selectRow(row);
  itemClicked();
}

// The second click finds what the first one has left.
void ListView::activateRow(int row) {
  if (!takesClicks() || !visible() || row < 0 || row >= count()) return;
  chooseRow(row);
  if (takesClicks() && visible() && selectedRow() == row) itemActivated();
}

void ListView::reset() {
  Control::reset();
  items_.clear();
  columns_.clear();
  cells_ = nullptr;
  selected_ = -1;
}

void ListView::itemClicked() {
  if (onItemClick) onItemClick();
}

void ListView::itemActivated() {
  if (onActivate && selectedRow() >= 0) onActivate();
}

void ListView::mousePressed(MouseButton button, int x, int y) {
  if (onMouseDown) onMouseDown(button, x, y);
}

void ListView::mouseReleased(MouseButton button, int x, int y) {
  if (onMouseUp) onMouseUp(button, x, y);
}

std::string_view ListView::cellText(int row, int column) { return itemText(row, column); }

}  // namespace pelvaro
