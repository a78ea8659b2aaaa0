// Form3: the operator picker. It shows the operator list by country or city; an activated row fills the connection
// editor and the credentials prompt. Rows can be edited and the list saved as the user's own.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "operators/operator_list.h"
#include "ui/controls/combo_box.h"
#include "ui/controls/list_view.h"
#include "ui/program_form.h"

namespace pelvaro {

struct Windows;

class Form3 : public ProgramForm {
 public:
  Form3(Windows& windows, Services& services, FormGroup& group);

  // Chooses the list file and loads it. Called before the picker is shown.
  void initialize();

  Label captionLabel{*this, "captionLabel"};  // the title
  Label Label1{*this, "Label1"};              // "Country/ City"
  ComboBox Combo1{*this, "Combo1"};           // the places, in the order of the file
  ListView ListView2{*this, "ListView2"};     // the operators of the chosen place
  CommandButton Command3{*this, "Command3"};  // "Edit"
  CommandButton Command4{*this, "Command4"};  // "Default": the delivered list
  CommandButton Command2{*this, "Command2"};  // "Save Current List"
  CommandButton Command1{*this, "Command1"};  // "Close"
  Mark closeMark{*this, "closeMark"};

 protected:
  void onLoad() override;
  void onUnload() override;
  void onEscape() override { unload(); }

 private:
  void load(const std::string& path);
  void showPlace();
  void rowClicked();
  void choose();
  void edit();
  void save();
  void restoreDelivered();

  Windows& windows_;
  operators::OperatorList list_;   // every record of the file
  std::vector<std::size_t> rows_;  // those of the chosen place, as they are shown
  bool rightClick_ = false;
};

}  // namespace pelvaro
