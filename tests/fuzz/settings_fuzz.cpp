// Any lines as what the program keeps and is told in words: its saved place and choices, the path of its list, the keys
// of the registry, and what a user types into the boxes of the editor and of the limits. The first byte says which.
// What is no place, choice or number is passed over, or ends in the run-time error of the conversion.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/runtime_error.h"
#include "input.h"
#include "operators/list_file.h"
#include "phonebook/entry_properties.h"
#include "platform/fake/fake_dial_service.h"
#include "platform/fake/fake_services.h"
#include "platform/ras_layout.h"
#include "ui/accessary.h"
#include "ui/windows.h"

namespace {

using namespace pelvaro;

// What is below the windows.
struct World {
  fake::Journal journal;
  fake::FakeDialService ras{journal};
  fake::FakeServices fakes{ras};

  // Runs an event; the numbers are those of the run-time errors that may end the program in it.
  void run(const std::function<void()>& event, std::initializer_list<int> errors = {}) {
    fakes.desktop.guarded(event);
    for (const std::string& report : fakes.desktop.reported) {
      check(std::any_of(errors.begin(), errors.end(), [&report](int number) {
        return report.starts_with("Run-time error '" + std::to_string(number) + "'");
      }));
    }
  }
};

// The main window opens whatever its place and the keys are, and says where it is when it closes.
void openMainWindow(std::string_view text) {
  World world;
  const std::string place = takeLine(text);
  world.fakes.settings.plant("Window", "Form1", place);
  while (!text.empty()) {
    auto& keys = world.fakes.registry;
    (text.size() % 2 == 0 ? keys.plainView : keys.view64).push_back(takeLine(text));
    keys.view64Missing = keys.view64.empty();
  }
  Windows windows(world.fakes.services);
  world.run([&windows] { windows.form1.show(); });
  check(windows.form1.visible() && world.fakes.registry.open == 0);
  const Place at = windows.form1.place();
  check(at.left >= -32768 && at.left <= 32767 && at.top >= -32768 && at.top <= 32767);
  check(place.find_first_of("0123456789") != std::string::npos || at == (Place{100, 100}));
  world.run([&windows] { windows.form1.unload(); });
  check(world.fakes.settings.get("Window", "Form1") == std::to_string(at.left) + "," + std::to_string(at.top));
}

// A choice is a place in its list, or nothing.
void openDriverWindow(std::string_view text) {
  World world;
  for (const char* key : {"brand", "model", "type"}) world.fakes.settings.plant("setting", key, takeLine(text));
  Windows windows(world.fakes.services);
  world.run([&windows] { windows.driverForm.show(); });
  for (ComboBox* list : {&windows.driverForm.Combo1, &windows.driverForm.Combo2, &windows.driverForm.Combo3}) {
    check(list->selected() >= -1 && list->selected() < list->count());
  }
  world.run([&windows] { windows.driverForm.Command1.click(); });
}

// The list that was chosen, if it is there, else the delivered one.
void openList(std::string_view text) {
  World world;
  const std::string path = takeLine(text), folder = takeLine(text);
  world.fakes.settings.plant("Setting", "path", path);
  if (!folder.empty()) world.fakes.files.contents[folder] = text;
  const std::string loaded = operators::pathToLoad(world.fakes.settings, world.fakes.files, folder);
  check(loaded == (path == folder && !path.empty() ? path : operators::deliveredPath(folder)));
  if (text.empty()) world.fakes.files.unreadable.insert(loaded);
  try {
    operators::loadList(world.fakes.files, loaded);
  } catch (const RuntimeError& error) {
    check(error.number() == 5 || error.number() == (world.fakes.files.isFile(loaded) ? 75 : 53));
  }
  world.fakes.files.diskFull = path.empty();
  check(operators::saveList(world.fakes.files, world.fakes.random, folder, {}) == !path.empty());
  check(operators::choosePath(world.fakes.settings, folder) && operators::chosenPath(world.fakes.settings) == folder);
}

// What the editor writes reads back as it was typed.
void writeEntry(std::string_view text) {
  World world;
  const std::string name = takeLine(text), number = takeLine(text), suffix = takeLine(text), device = takeLine(text);
  const std::string first = takeLine(text), second = takeLine(text);
  bool written = false;
  world.ras.onGetEntry = [](const char*, void*, std::uint32_t* size) {
    *size = ras::entry::kSizeToday;
    return ras::kErrorBufferTooSmall;
  };
  world.ras.onSetEntry = [&](const char* entry, void* record, std::uint32_t size) -> std::uint32_t {
    const ConstBytes bytes(static_cast<const std::uint8_t*>(record), size);
    check(size == ras::entry::kSizeToday && std::string("Corvanti-" + name).starts_with(entry));
    const bool typed = first.find_first_of("123456789") != std::string::npos;
    check(typed || get32(bytes, ras::entry::kDnsAddress.offset) == 0);
    written = true;
    return suffix == "refused" ? 5 : 0;
  };
  Windows windows(world.fakes.services);
  Form2& editor = windows.form2;
  world.run([&editor] { editor.open(false); });
  editor.Combo1.add(device);
  editor.Combo1.select(editor.Combo1.count() - 1);
  editor.Text1.setText(name);
  editor.Text2.setText(number);
  editor.Text3.setText(suffix);
  editor.Option2.choose();
  editor.Text4.setText(first);
  editor.Text5.setText(second);
  world.run([&editor] { editor.Command1.click(); }, {6, 9, 13});
  check(!written || world.fakes.desktop.reported.empty());
}

// A limit is one that fits, or the box tells what may be typed.
void setLimits(std::string_view text) {
  World world;
  const std::string minutes = takeLine(text), kilobytes = takeLine(text);
  Windows windows(world.fakes.services);
  Form6& limits = windows.form6;
  world.run([&] {
    limits.show();
    limits.Text1.setText(minutes);
    limits.Command1.click();
  });
  check(windows.form1.requiredtime % 60 == 0);
  world.run([&] {
    limits.show();
    limits.Option2.choose();
    limits.Text2.setText(kilobytes);
    limits.Command1.click();
  });
  check(windows.form1.requiredbyte >= -32768 && windows.form1.requiredbyte <= 32767);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr void (*kWays[])(std::string_view) = {openMainWindow, openDriverWindow, openList, writeEntry, setLimits};
  if (size != 0) kWays[data[0] % std::size(kWays)]({reinterpret_cast<const char*>(data) + 1, size - 1});
  return 0;
}
