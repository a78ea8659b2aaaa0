// Form6: sets a time limit or a size limit for the connection. What is accepted goes straight into the main window,
// which keeps the limit; nothing is stored.
#pragma once

#include <cstdint>

#include "ui/controls/checkable.h"
#include "ui/controls/control.h"
#include "ui/program_form.h"

namespace pelvaro {

struct Windows;

class Form6 : public ProgramForm {
 public:
  Form6(Windows& windows, Services& services, FormGroup& group);

  Label Label2{*this, "Label2"};              // the title
  OptionButton Option1{*this, "Option1"};     // a time limit
  TextBox Text1{*this, "Text1"};              // in minutes
  Label Label3{*this, "Label3"};              // "minutes"
  OptionButton Option2{*this, "Option2"};     // a size limit
  TextBox Text2{*this, "Text2"};              // in kilobytes
  Label Label4{*this, "Label4"};              // "KB"
  CommandButton Command1{*this, "Command1"};  // OK: accept
  CommandButton Command2{*this, "Command2"};  // Cancel
  Mark closeMark{*this, "closeMark"};

 protected:
  void onLoad() override;
  void onEscape() override { unload(); }
  void onColoursChanged() override;

 private:
  void accept();
  void enableOne(TextBox& one, TextBox& other);
  std::int16_t setTime();
  std::int16_t setSize();

  Windows& windows_;
};

}  // namespace pelvaro
