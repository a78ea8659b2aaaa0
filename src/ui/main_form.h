// Form1: the main window. It lists the connections, follows the state of the selected one twenty times a second, shows
// its traffic and keeps its limits once a second, and starts everything else. Closing it ends the program.
#pragma once

#include <string>
#include <vector>

#include "monitor/traffic.h"
#include "phonebook/entry_list.h"
#include "ui/controls/image.h"
#include "ui/controls/list_view.h"
#include "ui/controls/timer.h"
#include "ui/program_form.h"

namespace pelvaro {

struct Windows;

class Form1 : public ProgramForm {
 public:
  Form1(Windows& windows, Services& services, FormGroup& group);

  // Asks whether to call a telephone number by voice and hands it to the telephony service; an empty one is nothing.
  void CallPhone(const std::string& phoneNumber, const std::string& calledParty);
  // Opens the system's own editor of a phonebook entry.
  void EditEntry(const std::string& entryName, const std::string& phonebook);
  // The four limit labels: whether they are seen, and the captions "<text> elapse" and "<text> remain".
  void setSetting(std::string_view text, bool visible);
  // Fills the list from the phonebook again; the selection is lost.
  void refreshList();
  // The action of the connect image: opens the credentials prompt, or hangs up through the splash.
  void connectOrHangUp();

  Image Image1{*this, "Image1"};           // add a connection
  Image Image2{*this, "Image2"};           // connect or hang up; its tooltip tells which
  Image Image3{*this, "Image3"};           // set limits
  Image Image4{*this, "Image4"};           // the state as a picture
  Image Image5{*this, "Image5"};           // the program's picture in the title strip
  ListView ListView1{*this, "ListView1"};  // the connections
  Label statuslbl{*this, "statuslbl"};     // the state of the selected connection
  Label Label1{*this, "Label1"};           // bytes received
  Label Label2{*this, "Label2"};           // bytes transmitted
  Mark Label3{*this, "Label3"};            // the close mark
  Label Label4{*this, "Label4"};           // download rate
  Label Label5{*this, "Label5"};           // upload rate
  Mark Label6{*this, "Label6"};            // the minimise mark
  Label Label7{*this, "Label7"};           // what remains of a limit that is near
  Label Label8{*this, "Label8"};           // the title
  Label Label9{*this, "Label9"};           // caption: elapsed
  Label Label10{*this, "Label10"};         // elapsed time or received size
  Label Label11{*this, "Label11"};         // caption: remaining
  Label Label12{*this, "Label12"};         // the limit
  Timer Timer1{*this, {.interval = 50, .enabled = true, .yieldsFirst = true}};  // the state poll
  Timer Timer2{*this, {.interval = 1000, .enabled = false}};                    // the traffic tick

  RasHandle p_iConnID = 0;             // the current connection
  std::int32_t requiredbyte = 0;       // the size limit in KB, 0 for none
  std::int32_t requiredtime = 0;       // the time limit in seconds, 0 for none
  std::int16_t settingflag = 0;        // which limit is active: 0 for time, 1 for size
  int startTime = 0;                   // the time of day at which the time limit was set, in seconds
  std::int32_t tickCounter = 0;        // connected seconds since the window was loaded; never reset
  bool limitAsked = false;             // "No" was the answer to the question near the limit
  std::vector<std::string> modemKeys;  // names of the phone modems' driver keys

 protected:
  void onLoad() override;
  void onUnload() override;
  void onMousePressed(MouseButton button, int x, int y) override;
  void onMouseMoved(MouseButton button, int x, int y) override;
  void onMouseReleased(MouseButton button, int x, int y) override;

 private:
  void restorePlace();
  void wireButtons();
  void normalPictures();
  void poll();
  void tick();
  void updateTraffic(bool baseline);
  bool askedToDisconnect();
  void disconnectNow();
  void limitPassed(const char* question);
  void itemClicked();
  void readSelectedEntry();
  void popupMenu();
  void deleteSelected();
  int connectPictures();

  Windows& windows_;
  ActiveConnections connections_;
  std::string wanted_;  // the entry whose state the poll looks for
  monitor::Traffic traffic_;
  std::string line_;  // where a label's text is put together
  bool dragging_ = false;
  float dragX_ = 0, dragY_ = 0;
  bool rightClick_ = false;
};

}  // namespace pelvaro
