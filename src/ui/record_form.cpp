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

void frmEdit::edit(const std::function<std::string(int)>& heading, const std::function<std::string(int)>& field,
                   std::function<void(int, const std::string&)> write) {
  for (std::size_t i = 0; i < kFields; ++i) {
    Label1[i].setText(heading(static_cast<int>(i) + 1));
    Text1[i].setText(field(static_cast<int>(i) + 1));
  }
  write_ = std::move(write);
  show();
}

void frmEdit::accept() {
  if (write_) {
    for (std::size_t i = 0; i < kFields; ++i) write_(static_cast<int>(i) + 1, Text1[i].text());
  }
  unload();
}

}  // namespace pelvaro
