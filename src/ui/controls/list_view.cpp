#include "ui/controls/list_view.h"

namespace pelvaro {

void ListView::setItems(std::vector<std::string> items) {
  touch();
  items_ = std::move(items);
  selectRow(-1);
  if (peer()) peer()->setRowCount(count());
}

void ListView::removeItem(int row) {
  touch();
  if (row < 0 || row >= count()) return;
  items_.erase(items_.begin() + row);
  selectRow(-1);
  if (peer()) peer()->setRowCount(count());
}

int ListView::count() {
  touch();
  return static_cast<int>(items_.size());
}

const std::string& ListView::itemText(int row) {
  static const std::string none;
  return row >= 0 && row < count() ? items_[static_cast<std::size_t>(row)] : none;
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

void ListView::reset() {
  Control::reset();
  items_.clear();
  selected_ = -1;
}

void ListView::itemClicked() {
  if (onItemClick) onItemClick();
}

void ListView::mousePressed(MouseButton button, int x, int y) {
  if (onMouseDown) onMouseDown(button, x, y);
}

void ListView::mouseReleased(MouseButton button, int x, int y) {
  if (onMouseUp) onMouseUp(button, x, y);
}

std::string_view ListView::cellText(int row, int column) { return column == 0 ? itemText(row) : std::string_view{}; }

}  // namespace pelvaro
