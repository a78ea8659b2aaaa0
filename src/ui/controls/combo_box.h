// ComboBox: a drop-down list, one entry of which may be selected; nothing is typed into it. The entries are kept here.
// Scripts select by message and without an event, so a handler reads the selection from the control.
#pragma once

#include <string>
#include <vector>

#include "ui/controls/control.h"

namespace pelvaro {

class ComboBox : public Control {
 public:
  using Control::Control;

  // Removes all entries; nothing is selected afterwards. Raises nothing.
  void clear();
  // Appends an entry. Raises nothing and selects nothing.
  void add(std::string_view text);
  int count();
  // The text of an entry, counted from 0; empty when there is no such entry.
  const std::string& itemText(int index);

  // The selected entry as the screen has it, -1 for none.
  int selected();
  // Selects an entry in code, -1 for none, and raises the click as a user's choice does, also when it is selected
  // already. An index that the list does not have changes nothing and raises nothing.
  void select(int index);

  // The text of the selected entry, empty when none is selected.
  const std::string& text() override;
  // Selects the first entry of exactly that text, which raises the click; without one nothing is selected afterwards,
  // and nothing is raised.
  void setText(std::string_view text) override;

  // The user's choice of an entry, as a test makes it: does nothing while disabled or not visible.
  void chooseItem(int index);

 protected:
  void reset() override;

 private:
  void mark(int index);
  std::string_view cellText(int row, int column) override;

  std::vector<std::string> items_;
  int selected_ = -1;
};

}  // namespace pelvaro
