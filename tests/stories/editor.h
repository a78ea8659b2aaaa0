// What the stories about the connection editor share: opening it, filling it, the phones and the entry that was
// written.
#pragma once

#include "phonebook/entry_properties.h"
#include "phonebook/ras_error_text.h"
#include "story.h"

namespace pelvaro {

using Texts = std::vector<std::string>;

constexpr const char* kNokia = "Nokia 6230 USB Modem";
constexpr const char* kSamsung = "Samsung D500 USB Modem";
constexpr const char* kNoModem = "--No Modem detect--";

struct Editor : Story {
  void SetUp() override {
    world.registry.plainView = {"Nokia 6230 USB Modem", "Samsung D500 USB Modem", "SonyEricsson K700 USB Modem"};
    world.ports.unplug("COM5");
    world.ports.unplug("COM7");
    Story::SetUp();
    world.dialogs.onMessage = [this](const std::string& text) {
      asked.push_back(text);
      return 0;
    };
  }
  Form1& main() { return windows->form1; }
  Form2& editor() { return windows->form2; }
  void add() {
    user([this] { main().Image1.click(); });
  }
  void edit(const std::string& entry) {
    world.dialogs.onMenu = [] { return 1u; };
    for (int row = 0; row < main().ListView1.count(); ++row) {
      if (main().ListView1.itemText(row) != entry) continue;
      user([&] {
        static_cast<ControlEvents&>(main().ListView1).mousePressed(MouseButton::right, 1, 1);
        main().ListView1.chooseRow(row);
      });
      return;
    }
    FAIL() << "no entry " << entry;
  }
  void fill(const std::string& name, const std::string& number = "*99#", const std::string& apn = "internet") {
    editor().Text1.setText(name);
    editor().Text2.setText(number);
    editor().Text3.setText(apn);
    wait(200);
  }
  void write() {
    user([this] { editor().Command1.click(); });
  }
  void validate() {
    user([this] { editor().Check1.click(); });
  }
  // A phone whose maker's answer is these lines, divided by " | ".
  line::Phone& plug(const std::string& port, const std::string& maker) {
    std::string message;
    return world.ports.plug(port, *line::parsePhoneTable("AT+CGMI => " + maker + "\n", message));
  }
  Texts devices() {
    Texts texts;
    for (int i = 0; i < editor().Combo1.count(); ++i) texts.push_back(editor().Combo1.itemText(i));
    return texts;
  }
  Texts entries() {
    Texts names;
    for (const auto& entry : world.line.phonebook().entries) names.push_back(entry.name);
    return names;
  }
  RasEntryRecord record(const std::string& entry) {
    RasEntryRecord result;
    EXPECT_EQ(Module1::GetEntryProperties(world.ras, entry, result), 0u) << entry;
    return result;
  }
  // Whether the program has no port open: another one could have it.
  bool portIsFree(const std::string& name) { return world.ports.canOpen(name); }

  Texts asked;
};

}  // namespace pelvaro
