// All services of the system, made and gathered; the program has one. Benches bring a dial-up service of their own.
#pragma once

#include "platform/services.h"
#include "platform/win32/clock.h"
#include "platform/win32/dial_event_window.h"
#include "platform/win32/dial_service.h"
#include "platform/win32/dialogs.h"
#include "platform/win32/environment.h"
#include "platform/win32/event_loop.h"
#include "platform/win32/files.h"
#include "platform/win32/form_screen.h"
#include "platform/win32/interface_table.h"
#include "platform/win32/processes.h"
#include "platform/win32/random_source.h"
#include "platform/win32/registry.h"
#include "platform/win32/serial_port.h"
#include "platform/win32/settings.h"
#include "platform/win32/shutdown.h"
#include "platform/win32/telephony.h"

namespace pelvaro::win32 {

class SystemServices {
 public:
  explicit SystemServices(DialService* own = nullptr)
      : services{.clock = clock_,
                 .ras = own ? *own : ras_,
                 .dialWindow = dialWindow_,
                 .dialogs = dialogs_,
                 .environment = environment_,
                 .files = files_,
                 .loop = loop,
                 .forms = screen_,
                 .interfaces = interfaces_,
                 .processes = processes_,
                 .random = random_,
                 .registry = registry_,
                 .serial = serial_,
                 .settings = settings_,
                 .shutdown = shutdown_,
                 .telephony = telephony_} {}
  SystemServices(const SystemServices&) = delete;
  SystemServices& operator=(const SystemServices&) = delete;

  MessageLoop loop;

 private:
  SystemClock clock_;
  RasDialService ras_;
  HiddenDialWindow dialWindow_{loop};
  FormScreen screen_{loop};
  SystemDialogs dialogs_{screen_};
  SystemEnvironment environment_;
  SystemFiles files_{&loop};
  SystemInterfaceTable interfaces_;
  SystemProcesses processes_;
  SystemRandom random_;
  SystemRegistry registry_;
  SystemSerialPort serial_;
  SystemSettings settings_;
  SystemShutdown shutdown_;
  SystemTelephony telephony_;

 public:
  Services services;
};

}  // namespace pelvaro::win32
