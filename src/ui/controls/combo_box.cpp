#include "ui/controls/combo_box.h"

#include <algorithm>

namespace pelvaro {

void ComboBox::clear() {
  touch();
  items_.clear();
  selected_ = -1;
  if (peer()) peer()->setRowCount(0);
}

void ComboBox::add(std::string_view text) {
  touch();
  items_.emplace_back(text);
  if (peer()) peer()->setRowCount(count());
}

int ComboBox::count() {
  touch();
  return static_cast<int>(items_.size());
}

const std::string& ComboBox::itemText(int index) {
  static const std::string none;
  return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)] : none;
}

int ComboBox::selected() {
  touch();
  if (peer()) selected_ = peer()->selectedRow();
  return selected_ < count() ? selected_ : -1;
}

void ComboBox::mark(int index) {
  touch();
  selected_ = index;
  if (peer()) peer()->selectRow(index);
}

void ComboBox::select(int index) {
  if (index < -1 || index >= count()) return;
  mark(index);
  raiseClick();
}

const std::string& ComboBox::text() { return itemText(selected()); }

void ComboBox::setText(std::string_view newText) {
  touch();
  const auto found = std::find(items_.begin(), items_.end(), newText);
  if (found == items_.end()) {
    mark(-1);
  } else {
    select(static_cast<int>(found - items_.begin()));
  }
}

// On a screen the selection is there before the choice is reported.
void ComboBox::chooseItem(int index) {
  if (!takesClicks() || !visible() || index < 0 || index >= count()) return;
  mark(index);
  raiseClick();
}

void ComboBox::reset() {
  Control::reset();
  items_.clear();
  selected_ = -1;
}

std::string_view ComboBox::cellText(int row, int column) { return column == 0 ? itemText(row) : std::string_view{}; }

}  // namespace pelvaro
