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
struct Processes;
struct Registry;
struct SerialPort;
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
  Processes& processes;
  Registry& registry;
  SerialPort& serial;
  Telephony& telephony;
};

}  // namespace pelvaro
