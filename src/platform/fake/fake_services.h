// All services of the system as fakes, with one journal, for tests that need the whole set.
#pragma once

#include "platform/fake/fake_dialogs.h"
#include "platform/fake/fake_files.h"
#include "platform/fake/fake_interface_table.h"
#include "platform/fake/fake_processes.h"
#include "platform/fake/fake_random.h"
#include "platform/fake/fake_serial_port.h"
#include "platform/fake/fake_settings.h"
#include "platform/fake/fake_system.h"
#include "platform/fake/headless_desktop.h"
#include "platform/services.h"

namespace pelvaro::fake {

struct FakeServices {
  // Services that a test brings itself.
  struct Own {
    FormFactory* forms = nullptr;
    SerialPort* serial = nullptr;
  };
  explicit FakeServices(DialService& ras) : FakeServices(ras, Own()) {}
  FakeServices(DialService& ras, Own own)
      : services{.clock = clock,
                 .ras = ras,
                 .dialWindow = desktop,
                 .dialogs = dialogs,
                 .environment = environment,
                 .files = files,
                 .loop = desktop,
                 .forms = own.forms ? *own.forms : desktop,
                 .interfaces = interfaces,
                 .processes = processes,
                 .random = random,
                 .registry = registry,
                 .serial = own.serial ? *own.serial : serial,
                 .settings = settings,
                 .shutdown = shutdown,
                 .telephony = telephony} {
    dialogs.ending = files.ended = [this] { return desktop.ended(); };
  }
  FakeServices(const FakeServices&) = delete;
  FakeServices& operator=(const FakeServices&) = delete;

  Journal journal;
  HeadlessDesktop desktop;
  FakeClock clock;
  FakeDialogs dialogs{journal};
  FakeEnvironment environment;
  FakeFiles files{journal};
  FakeInterfaceTable interfaces;
  FakeProcesses processes{journal};
  FakeRandom random;
  FakeRegistry registry{journal};
  FakeSerialPort serial{journal};
  FakeSettings settings{journal};
  FakeShutdown shutdown{journal};
  FakeTelephony telephony{journal};
  Services services;
};

}  // namespace pelvaro::fake
