#include "ui/operators_form.h"

#include "base/text.h"
#include "operators/list_file.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "ui/accessary.h"
#include "ui/colour_scheme.h"
#include "ui/form_layouts.h"
#include "ui/windows.h"

namespace pelvaro {

namespace {

constexpr const char* kSaved = "File saved.";
constexpr const char* kNotSaved = "Fail to save file.";
constexpr const char* kMissing = "File not found, please reinstall.";
constexpr const char* kSamsungNumber = "*99**1*1#";
constexpr const char* kNumber = "*99#";
// Of the fields of a record.
constexpr std::size_t kApn = 2, kUser = 3, kPassword = 4, kPrimary = 5, kSecondary = 6;
// Every field is a column; those that are not to be seen have no width. The others stand side by side in the list with
// its vertical scroll bar, at 96 dpi; those of the name servers hold any address.
constexpr int kWidths[operators::kFieldCount] = {0, 100, 108, 72, 0, 100, 100, 64, 0, 0, 0};

// "[blank]" stands for nothing in a credential, wherever it is.
std::string withoutBlanks(std::string_view field) {
  constexpr std::string_view kBlank = "[blank]";
  std::string text(field);
  for (auto at = text.find(kBlank); at != std::string::npos; at = text.find(kBlank, at)) text.erase(at, kBlank.size());
  return text;
}

}  // namespace

Form3::Form3(Windows& windows, Services& services, FormGroup& group)
    : ProgramForm(services, group, layouts::kForm3), windows_(windows) {
  Combo1.onClick = [this] { showPlace(); };
  ListView2.onMouseDown = [this](MouseButton button, int, int) { rightClick_ = button == MouseButton::right; };
  ListView2.onMouseUp = [this](MouseButton, int, int) { rightClick_ = false; };
  ListView2.onItemClick = [this] { rowClicked(); };
  ListView2.onActivate = [this] { choose(); };
  Command1.onClick = [this] { unload(); };
  Command2.onClick = [this] { save(); };
  Command3.onClick = [this] { edit(); };
  Command4.onClick = [this] { restoreDelivered(); };
  closeMark.onClick = [this] { unload(); };
}

void Form3::onLoad() {
  rightClick_ = false;
  accessary::applyColourScheme(*this);
  Command3.setEnabled(false);
}

void Form3::onUnload() {
  windows_.recordForm.unload();
  list_ = {};
  rows_.clear();
}

void Form3::initialize() {
  load(operators::pathToLoad(services().settings, services().files, services().environment.programFolder()));
}

void Form3::load(const std::string& path) {
  rows_.clear();
  ListView2.setRows(0, nullptr);
  Combo1.clear();
  list_ = operators::loadList(services().files, path);
  // There is nothing to go back from while the delivered list is the one shown.
  const std::string delivered = operators::deliveredPath(services().environment.programFolder());
  Command4.setEnabled(lowered(path) != lowered(delivered));
  std::vector<ListColumn> columns;
  const std::vector<std::string_view> headings = list_.headings();
  for (std::size_t i = 0; i < operators::kFieldCount; ++i) {
    columns.push_back({i < headings.size() ? std::string(headings[i]) : std::string(), kWidths[i]});
  }
  ListView2.setColumns(std::move(columns));
  for (const std::string_view place : list_.places()) Combo1.add(place);
  if (Combo1.count() > 0) Combo1.select(0);
}

void Form3::showPlace() {
  rows_ = list_.rowsOf(Combo1.text());
  ListView2.setRows(static_cast<int>(rows_.size()), [this](int row, int column) {
    return list_.field(rows_[static_cast<std::size_t>(row)], static_cast<std::size_t>(column));
  });
}

void Form3::rowClicked() {
  if (ListView2.count() > 0 && ListView2.selectedRow() >= 0) Command3.setEnabled(true);
  if (!rightClick_) return;
  const std::uint32_t chosen = accessary::popupMenu(services().dialogs, {"Edit"});
  rightClick_ = false;  // the menu takes the release of the button for itself
  if (chosen == 1 && loaded()) edit();
}

// The row that was activated fills the editor and the prompt.
void Form3::choose() {
  const int row = ListView2.selectedRow();
  if (row < 0) return;
  // Copies: the editor may come back with this, ask something, and the list may be gone before the answer.
  const operators::Record record = list_.record(rows_[static_cast<std::size_t>(row)]);
  const std::vector<std::string> fields(record.fields.begin(), record.fields.end());
  Form2& editor = windows_.form2;
  const bool samsung = contains(lowered(editor.Combo1.text()), "samsung");
  // Kept on purpose: for these phones the number stands in the column of the user name, a "[blank]" included.
  const std::string special = fields[kUser].empty() ? kSamsungNumber : fields[kUser];
  editor.Text2.setText(samsung ? special : kNumber);
  editor.Text3.setText(fields[kApn]);
  editor.Text4.setText(fields[kPrimary]);
  editor.Text5.setText(fields[kSecondary]);
  windows_.form4.Text1.setText(withoutBlanks(fields[kUser]));
  windows_.form4.Text2.setText(withoutBlanks(fields[kPassword]));
  unload();
}

// What is edited is the row of this moment, whatever is selected when the boxes are accepted.
void Form3::edit() {
  const int selected = ListView2.selectedRow();
  if (selected < 0) return;
  const std::size_t row = rows_[static_cast<std::size_t>(selected)];
  frmEdit::Texts headings, fields;
  for (std::size_t i = 0; i < frmEdit::kFields; ++i) {
    headings[i] = ListView2.columns()[i + 1].heading;
    fields[i] = list_.field(row, i + 1);
  }
  windows_.recordForm.edit(headings, fields, [this, row](const frmEdit::Texts& texts) {
    for (std::size_t i = 0; i < frmEdit::kFields; ++i) list_.setField(row, i + 1, texts[i]);
    ListView2.refresh();
  });
}

void Form3::save() {
  const std::string folder = services().environment.programFolder();
  const bool saved = operators::saveList(services().files, services().random, folder, list_);
  services().dialogs.messageBox(saved ? kSaved : kNotSaved, kButtonsOk);
  if (!saved) return;
  operators::choosePath(services().settings, operators::ownPath(folder));
  if (loaded()) Command4.setEnabled(true);
}

void Form3::restoreDelivered() {
  const std::string delivered = operators::deliveredPath(services().environment.programFolder());
  if (!services().files.isFile(delivered)) {
    services().dialogs.messageBox(kMissing, kButtonsOk);
    return;
  }
  windows_.recordForm.unload();  // its row goes with the list
  operators::choosePath(services().settings, delivered);
  load(delivered);
}

}  // namespace pelvaro
