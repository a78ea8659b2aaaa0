// What stands behind a form and its controls on the screen: windows of the system. A form or control without a peer is
// a plain value, which is how whole-program tests run. Implemented over user32 and comctl32 in win32/.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace pelvaro {

// A rectangle in pixels at 96 dpi; the peers scale its edges.
struct Rect96 {
  int x, y, width, height;
};

// 0x00BBGGRR, blue in the highest byte.
using Colour = std::uint32_t;

struct Colours {
  Colour background;
  Colour text;
};

enum class ControlKind {
  label,          // text; never takes the focus
  picture,        // an icon; never takes the focus
  pictureButton,  // a large button with an icon and its caption or tooltip text
  closeMark,      // the window's own close and minimise marks
  minimiseMark,
  commandButton,
  optionButton,  // the options of a form are one group; they stand next to each other in its table
  checkBox,
  textBox,
  passwordBox,
  comboBox,  // a drop-down list that shows the selected entry, or its caption while none is selected
  listView,
  animation,
};

// How a label lays its text.
enum class TextStyle {
  plain,
  cut,  // cut with an ellipsis
  bold,
  right,  // right-aligned, cut with an ellipsis
  boldRight,
  title,  // bold, cut with an ellipsis
  centred,
  wrapped,  // several lines
  figure,   // "caption: number unit" in three columns
};

// The pictures that controls show: icons of the program's own.
enum class Picture {
  none,
  application,
  add,
  connect,
  hangUp,
  limits,
  signIn,
  cable,
  driver,
  dialing,
  failed,
  listEntry,
  connected,
  disconnected
};

// How a picture button lies under the pointer.
enum class Look { normal, hover, pressed };

// One control of a form: a row of the form's layout table.
struct ControlLayout {
  const char* name;  // as the code has it, "Command1"
  ControlKind kind;
  const char* caption;  // the design text
  Rect96 place;
  TextStyle style = TextStyle::plain;
  Picture picture = Picture::none;
  bool visible = true;
  bool leftRule = false;   // a hairline at the left edge
  bool clickable = false;  // of a label: it hears clicks, as a mark's own label does
  bool headings = false;   // of a list: columns with headings
  char refused = 0;        // of a text box: the character that it takes neither from the keyboard nor the clipboard,
  const char* refusal = nullptr;  // and why, in words
  // What a screen reader calls it where neither its own text nor the label before it says so. A label is called by its
  // text while it has one.
  const char* spoken = nullptr;
};

// A column of a list with headings.
struct ListColumn {
  std::string heading;
  int width;  // at 96 dpi; 0 for one that is not to be seen, whose cells scripts read all the same
  bool operator==(const ListColumn&) const = default;
};

// A form: its class is "Pelvaro." and the name. Controls stand in tab order, a label before the box it names.
struct FormLayout {
  const char* name;
  const char* title;
  int width, height;
  std::span<const ControlLayout> controls;
  std::span<const Rect96> rules;        // hairlines
  const char* defaultButton = nullptr;  // the button that Enter presses
  const char* firstFocus = nullptr;
};

// A point on the screens, in pixels.
struct Place {
  int left, top;
  bool operator==(const Place&) const = default;
};

// How the mouse pointer looks over a form.
enum class Pointer { arrow, hourglass };

enum class MouseButton { none = 0, left = 1, right = 2 };

// What a control on the screen reports. Positions are pixels from the control's upper left corner.
struct ControlEvents {
  virtual ~ControlEvents() = default;
  // The user's click. The mark that it sets or takes away is on the screen by then.
  virtual void clicked() {}
  virtual void mousePressed(MouseButton, int /*x*/, int /*y*/) {}
  virtual void mouseMoved(MouseButton, int /*x*/, int /*y*/) {}
  virtual void mouseReleased(MouseButton, int /*x*/, int /*y*/) {}
  // A list row was chosen by the user, or was chosen already and clicked again.
  virtual void itemClicked() {}
  // The selected row of a list was activated: by a double click or by Enter.
  virtual void itemActivated() {}
  // The text of a list cell, for a list that keeps its rows above; column 0 is the item's own text. A combo box
  // takes the text of a row over when that is new. It is asked for while the system draws: nothing is thrown.
  virtual std::string_view cellText(int /*row*/, int /*column*/) { return {}; }
};

// One control on the screen. Verbs that mean nothing for a kind do nothing.
struct ControlPeer {
  virtual ~ControlPeer() = default;
  // The text as the screen has it, which is the truth: scripts and screen readers may have set it.
  virtual const std::string& text() = 0;
  virtual void setText(const std::string& text) = 0;
  virtual void setVisible(bool visible) = 0;
  virtual void setEnabled(bool enabled) = 0;
  virtual void setColours(Colours colours) = 0;
  virtual void setPicture(Picture picture, Look look) = 0;
  virtual void focus() = 0;
  // List views and combo boxes: how many rows there are now, and the selected one (-1 for none). Neither raises an
  // event. A combo box with fewer rows than before has nothing selected.
  virtual void setRowCount(int /*count*/) {}
  virtual int selectedRow() { return -1; }
  virtual void selectRow(int /*row*/) {}
  // List views with headings: other columns. The rows stay.
  virtual void setColumns(std::span<const ListColumn> /*columns*/) {}
  // Option buttons and check boxes: the mark as the screen has it. Setting it raises no event.
  virtual bool checked() { return false; }
  virtual void setChecked(bool /*checked*/) {}
  // Animations: opens a file and plays it for ever.
  virtual void playFile(const std::string& /*path*/) {}
};

struct TimerEvents {
  virtual ~TimerEvents() = default;
  virtual void ticked() = 0;
};

struct TimerPeer {
  virtual ~TimerPeer() = default;
  virtual void start(int milliseconds) = 0;
  virtual void stop() = 0;
  // One tick as soon as other pending events have run.
  virtual void tickSoon() = 0;
};

// What a form on the screen reports. Positions are pixels from the form's upper left corner.
struct FormEvents {
  virtual ~FormEvents() = default;
  virtual void activated() {}       // it became the active one among the program's windows
  virtual void closeRequested() {}  // Alt+F4 and the like
  virtual void escapePressed() {}
  virtual void helpRequested() {}
  virtual void coloursChanged() {}
  virtual void mousePressed(MouseButton /*button*/, int /*x*/, int /*y*/) {}
  virtual void mouseMoved(MouseButton /*button*/, int /*x*/, int /*y*/) {}
  virtual void mouseReleased(MouseButton /*button*/, int /*x*/, int /*y*/) {}
};

// One form on the screen, made hidden.
struct FormPeer {
  virtual ~FormPeer() = default;
  virtual std::shared_ptr<ControlPeer> createControl(const ControlLayout& layout, ControlEvents& events) = 0;
  virtual std::unique_ptr<TimerPeer> createTimer(TimerEvents& events) = 0;
  virtual void setColours(Colours colours) = 0;
  // Destroys the windows now, though the object may live on while their procedures are still on the stack.
  virtual void destroy() = 0;
  // Shows and activates; modal ones keep the program's other windows from input until they are hidden.
  virtual void show(bool modal) = 0;
  virtual void hide() = 0;
  virtual void moveBy(int dx, int dy) = 0;
  virtual void minimise() = 0;
  virtual void setPointer(Pointer pointer) = 0;
  // Where the form's upper left corner is on the screens, in pixels, while it is not minimised; and putting it there,
  // or as near as the whole form is on a screen.
  virtual Place place() = 0;
  virtual void moveTo(Place place) = 0;
};

struct FormFactory {
  virtual ~FormFactory() = default;
  // The first form made is the main one, which owns the others.
  virtual std::shared_ptr<FormPeer> createForm(const FormLayout& layout, FormEvents& events) = 0;
  // GetSysColor.
  virtual Colour systemColour(int index) = 0;
  // A high-contrast scheme is on: the system's colours are to be taken as they are.
  virtual bool highContrast() = 0;
};

}  // namespace pelvaro
