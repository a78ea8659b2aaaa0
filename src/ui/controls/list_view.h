// ListView: a list in report view. The rows are kept here; the screen asks for the cells that it draws.
#pragma once

#include <string>
#include <vector>

#include "ui/controls/control.h"

namespace pelvaro {

class ListView : public Control {
 public:
  using Control::Control;

  // Replaces all rows at once; nothing is selected afterwards. Raises no event.
  void setItems(std::vector<std::string> items);
  // Removes one row; the others keep their order, nothing is selected afterwards. Raises no event.
  void removeItem(int row);
  int count();
  // The text of a row, empty when there is no such row.
  const std::string& itemText(int row);

  // The selected row as the screen has it, -1 for none.
  int selectedRow();
  // Selects a row, -1 for none. Raises no event.
  void selectRow(int row);
  // The text of the selected row, empty when none is selected.
  const std::string& selectedText() { return itemText(selectedRow()); }

  // The user's choice of a row, as a test makes it: selects it and raises the click.
  void chooseRow(int row);

  std::function<void()> onItemClick;
  std::function<void(MouseButton, int x, int y)> onMouseDown;
  std::function<void(MouseButton, int x, int y)> onMouseUp;

 protected:
  void reset() override;

 private:
  void itemClicked() override;
  void mousePressed(MouseButton button, int x, int y) override;
  void mouseReleased(MouseButton button, int x, int y) override;
  std::string_view cellText(int row, int column) override;

  std::vector<std::string> items_;
  int selected_ = -1;
};

}  // namespace pelvaro
