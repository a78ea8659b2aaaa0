#include "ui/record_form.h"

#include <utility>

#include "ui/colour_scheme.h"
#include "ui/form_layouts.h"

namespace pelvaro {

frmEdit::frmEdit(Services& services, FormGroup& group) : ProgramForm(services, group, layouts::kFrmEdit) {
  Command1.onClick = [this] { accept(); };
  Command2.onClick = [this] { unload(); };
  closeMark.onClick = [this] { unload(); };
}

void frmEdit::onLoad() { accessary::applyColourScheme(*this); }

void frmEdit::edit(const Texts& headings, const Texts& fields, std::function<void(const Texts&)> write) {
  for (std::size_t i = 0; i < kFields; ++i) {
    Label1[i].setText(headings[i]);
    Text1[i].setText(fields[i]);
  }
  write_ = std::move(write);
  show();
}

void frmEdit::accept() {
  Texts texts;
  for (std::size_t i = 0; i < kFields; ++i) texts[i] = Text1[i].text();
  if (write_) write_(texts);
  unload();
}

}  // namespace pelvaro
