// Every service of the system that the program uses, handed down from main.
#pragma once

namespace pelvaro {

struct Clock;
struct DialService;
struct DialEventWindow;
struct Dialogs;
struct Environment;
struct EventLoop;
struct Files;
struct FormFactory;
struct InterfaceTable;
struct Processes;
struct RandomSource;
struct Registry;
struct SerialPort;
struct Settings;
struct Shutdown;
struct Telephony;

struct Services {
  Clock& clock;
  DialService& ras;
  DialEventWindow& dialWindow;
  Dialogs& dialogs;
  Environment& environment;
  Files& files;
  EventLoop& loop;
  FormFactory& forms;
  InterfaceTable& interfaces;
  Processes& processes;
  RandomSource& random;
  Registry& registry;
  SerialPort& serial;
  Settings& settings;
  Shutdown& shutdown;
  Telephony& telephony;
};

}  // namespace pelvaro
