// Every service of the system that the program uses, handed down from main.
#pragma once

namespace pelvaro {

struct Clock;
struct DialService;
struct DialEventWindow;
struct Dialogs;
struct Environment;
struct EventLoop;
struct FormFactory;
struct InterfaceTable;
struct Registry;
struct Telephony;

struct Services {
  Clock& clock;
  DialService& ras;
  DialEventWindow& dialWindow;
  Dialogs& dialogs;
  Environment& environment;
  EventLoop& loop;
  FormFactory& forms;
  InterfaceTable& interfaces;
  Registry& registry;
  Telephony& telephony;
};

}  // namespace pelvaro
