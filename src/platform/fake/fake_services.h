// All services of the system as fakes, with one journal, for tests that need the whole set.
#pragma once

#include "platform/fake/fake_dialogs.h"
#include "platform/fake/fake_interface_table.h"
#include "platform/fake/fake_system.h"
#include "platform/fake/headless_desktop.h"
#include "platform/services.h"

namespace pelvaro::fake {

struct FakeServices {
  explicit FakeServices(DialService& ras)
      : services{.clock = clock,
                 .ras = ras,
                 .dialWindow = desktop,
                 .dialogs = dialogs,
                 .environment = environment,
                 .loop = desktop,
                 .forms = desktop,
                 .interfaces = interfaces,
                 .registry = registry,
                 .telephony = telephony} {
    dialogs.ending = [this] { return desktop.ended(); };
  }
  FakeServices(const FakeServices&) = delete;
  FakeServices& operator=(const FakeServices&) = delete;

  Journal journal;
  HeadlessDesktop desktop;
  FakeClock clock;
  FakeDialogs dialogs{journal};
  FakeEnvironment environment;
  FakeInterfaceTable interfaces;
  FakeRegistry registry{journal};
  FakeTelephony telephony{journal};
  Services services;
};

}  // namespace pelvaro::fake
