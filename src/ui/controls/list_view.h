// ListView: a list in report view. Rows of one text are kept here (setItems), rows of several cells by the form
// (setColumns, setRows); the screen asks for the cells that it draws.
#pragma once

#include <functional>
#include <string>
#include <string_view>
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
  // The text of a row, empty when there is no such row. Stays until the next call.
  const std::string& itemText(int row);

  // The columns of a list with headings; column 0 is the item's own text. The rows stay. Columns that are the same as
  // before keep the widths that the user has given them. Raises no event.
  void setColumns(std::vector<ListColumn> columns);
  const std::vector<ListColumn>& columns();
  // The text of a cell of the form's rows; asked for rows and columns that there are. It must last until the list is
  // told of a change.
  using CellSource = std::function<std::string_view(int row, int column)>;
  // Other rows, which the form keeps: nothing is copied. The list begins at its first row, nothing is selected. Raises
  // no event.
  void setRows(int count, CellSource cells);
  // The form has written into cells of its rows: they are shown anew, the selection stays.
  void refresh();
  // The text of a cell, also of a column that is not seen; empty when there is no such cell.
  std::string_view itemText(int row, int column);

  // The selected row as the screen has it, -1 for none.
  int selectedRow();
  // Selects a row, -1 for none. Raises no event.
  void selectRow(int row);
  // The text of the selected row, empty when none is selected.
  const std::string& selectedText() { return itemText(selectedRow()); }

  // The user's choice of a row, as a test makes it: selects it and raises the click.
  void chooseRow(int row);

  // The user's double click on a row, as a test makes it: chooses it and raises the activation. Does nothing while the
  // list is disabled or not visible, or when there is no such row.
  void activateRow(int row);

  std::function<void()> onItemClick;  // the user has chosen a row, by mouse or keyboard
  std::function<void()> onActivate;   // a double click, or Enter, on the selected row
  std::function<void(MouseButton, int x, int y)> onMouseDown;
  std::function<void(MouseButton, int x, int y)> onMouseUp;

 protected:
  void reset() override;

 private:
  void itemClicked() override;
  void itemActivated() override;
  void mousePressed(MouseButton button, int x, int y) override;
  void mouseReleased(MouseButton button, int x, int y) override;
  std::string_view cellText(int row, int column) override;

  std::vector<std::string> items_;
  std::vector<ListColumn> columns_;
  CellSource cells_;   // of rows that the form keeps
  int cellRows_ = 0;   // how many those are
  std::string asked_;  // the text of one of them
  int selected_ = -1;
};

}  // namespace pelvaro
