// frmEdit: edits the ten fields of one row of the operator list.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>

#include "ui/controls/control.h"
#include "ui/program_form.h"

namespace pelvaro {

class frmEdit : public ProgramForm {
 public:
  static constexpr std::size_t kFields = 10;
  using Texts = std::array<std::string, kFields>;

  frmEdit(Services& services, FormGroup& group);

  // Shows the fields under their headings. OK hands what the boxes hold by then to `write` and closes the form.
  void edit(const Texts& headings, const Texts& fields, std::function<void(const Texts&)> write);

  Label captionLabel{*this, "captionLabel"};  // the title
  Label Label1[kFields] = {{*this, "Label1(0)"}, {*this, "Label1(1)"}, {*this, "Label1(2)"}, {*this, "Label1(3)"},
                           {*this, "Label1(4)"}, {*this, "Label1(5)"}, {*this, "Label1(6)"}, {*this, "Label1(7)"},
                           {*this, "Label1(8)"}, {*this, "Label1(9)"}};  // the headings
  TextBox Text1[kFields] = {{*this, "Text1(0)"}, {*this, "Text1(1)"}, {*this, "Text1(2)"}, {*this, "Text1(3)"},
                            {*this, "Text1(4)"}, {*this, "Text1(5)"}, {*this, "Text1(6)"}, {*this, "Text1(7)"},
                            {*this, "Text1(8)"}, {*this, "Text1(9)"}};  // the fields
  CommandButton Command1{*this, "Command1"};                            // OK: write back
  CommandButton Command2{*this, "Command2"};                            // Cancel
  Mark closeMark{*this, "closeMark"};

 protected:
  void onLoad() override;
  void onUnload() override { write_ = nullptr; }
  void onEscape() override { unload(); }

 private:
  void accept();

  std::function<void(const Texts&)> write_;
};

}  // namespace pelvaro
