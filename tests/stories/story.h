// What the stories share: the whole program without a screen on the practice line, phones in memory, a clock turned by
// hand, and a journal of every call to the dial-up service.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "codes.h"
#include "dial_line.h"
#include "line_dial_service.h"
#include "memory_ports.h"
#include "memory_serial_port.h"
#include "operators/mod_encrypt.h"
#include "platform/fake/fake_services.h"
#include "ui/windows.h"

namespace pelvaro {

// An operator list as it is delivered: two operators of one place, one of another.
inline const std::string& smallOperatorList() {
  static const std::string list = [] {
    fake::FakeRandom random;
    std::string bytes;
    for (const char* line : {"Country/ City,Operator,APN,User Name,Password,Primary DNS,Secondary DNS,Plan,A,B,C",
                             "Lisbon,Norline,internet,[blank],[blank],192.0.2.1,192.0.2.2,,,,",
                             "Porto,Telvira,data,guest,,,,,,,", "Lisbon,Marisol,marisol,,,,,,,,"}) {
      bytes += modEncrypt::Scramble(line, random) + "\r\n";
    }
    return bytes;
  }();
  return list;
}

// The practice line with its ports.
struct WorldsLine {
  WorldsLine(line::Scenario scenario, line::LineCallbacks callbacks)
      : line(line::firstPhonebook(), std::move(scenario), ports, std::move(callbacks)) {}

  line::MemoryPorts ports;
  line::DialLine line;
  line::LineDialService ras{line};
  line::MemorySerialPort port{ports};  // the program's own, for detecting phones
};

// Everything below the windows; outlives the program, as the system does.
class World : public WorldsLine, public fake::FakeServices {
 public:
  explicit World(line::Scenario scenario = quickScenario())
      : WorldsLine(std::move(scenario), callbacks(*this)), FakeServices(ras, {.serial = &port}) {
    ports.plug("COM5", phone());
    ports.plug("COM7", phone());
    desktop.onTime = [this](std::uint64_t now) {
      line.step(now);
      clock.time = (timeAtStart + static_cast<int>(now / 1000)) % 86400;
    };
    desktop.systemColours[19] = 0xF8E4D8;
  }

  static line::Scenario quickScenario() {
    line::Scenario scenario;
    scenario.pace = 100;
    scenario.timeout = 5000;
    return scenario;
  }
  static line::PhoneTable phone() {
    std::string message;
    return *line::parsePhoneTable("AT+CGMI => Nokia | OK\nAT+CGDCONT=* => OK\n", message);
  }

  int timeAtStart = 12 * 3600;  // of day, in seconds
  // The notifications that reached the program, "state/error".
  std::vector<std::string> told;
  // The calls to the service but for the enumerations, while the scenario's journal is on.
  std::vector<std::string> calls;

 private:
  static line::LineCallbacks callbacks(World& world) {
    line::LineCallbacks result;
    result.notify = [&world](std::uintptr_t window, std::uint32_t state, std::uint32_t error) {
      world.told.push_back(std::to_string(state) + "/" + std::to_string(error));
      world.desktop.postMessage(window, world.desktop.registeredMessage, state, static_cast<std::intptr_t>(error));
    };
    result.save = [](const line::Phonebook&) { return true; };
    result.journal = [&world](const std::string& text) { world.calls.push_back(text); };
    return result;
  }
};

class Story : public testing::Test {
 protected:
  explicit Story(line::Scenario scenario = World::quickScenario()) : world(std::move(scenario)) {}

  void SetUp() override { start(); }
  void start() {
    windows = std::make_unique<Windows>(world.services);
    world.desktop.guarded([this] { windows->form1.show(); });
    wait(60);
  }
  void wait(int milliseconds) { world.desktop.advance(milliseconds); }
  // The user does something.
  void user(const std::function<void()>& action) { world.desktop.guarded(action); }

  void choose(const std::string& entry) {
    ListView& list = windows->form1.ListView1;
    for (int row = 0; row < list.count(); ++row) {
      if (list.itemText(row) == entry) return user([&list, row] { list.chooseRow(row); });
    }
    FAIL() << "no entry " << entry;
  }
  void dial(const std::string& entry, const std::string& name = line::kPracticeUser,
            const std::string& password = line::kPracticePassword) {
    choose(entry);
    user([this] { windows->form1.Image2.click(); });
    windows->form4.Text1.setText(name);
    windows->form4.Text2.setText(password);
    user([this] { windows->form4.Command1.click(); });
  }
  std::string status() { return windows->form1.statuslbl.text(); }
  std::string tooltip() { return windows->form1.Image2.toolTipText(); }
  std::string progress() { return windows->statusForm.Label1.text(); }
  // Waits, in steps of 10 ms, until the progress text is seen.
  bool waitForProgress(const std::string& text, int milliseconds = 10000) {
    for (; milliseconds > 0 && progress() != text; milliseconds -= 10) wait(10);
    return progress() == text;
  }
  bool waitForStatus(const std::string& text, int milliseconds = 10000) {
    for (; milliseconds > 0 && status() != text; milliseconds -= 10) wait(10);
    return status() == text;
  }

  World world;
  std::unique_ptr<Windows> windows;
};

constexpr const char* kUp = "Status: Connected.";
constexpr const char* kDown = "Status: Disconnected.";

}  // namespace pelvaro
