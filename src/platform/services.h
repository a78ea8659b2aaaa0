// Every service of the system that the program uses, handed down from main.
#pragma once

namespace pelvaro {

struct DialService;
struct DialEventWindow;
struct Dialogs;
struct Environment;
struct EventLoop;
struct FormFactory;
struct Registry;
struct Telephony;

struct Services {
  DialService& ras;
  DialEventWindow& dialWindow;
  Dialogs& dialogs;
  Environment& environment;
  EventLoop& loop;
  FormFactory& forms;
  Registry& registry;
  Telephony& telephony;
};

}  // namespace pelvaro
