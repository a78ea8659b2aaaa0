// Any bytes as what the dial-up service puts into the program's buffers: entries of any size, lists of entries, devices
// and connections with any sizes and counts, saved parameters and messages. Nothing may be read or written outside a
// buffer, and what is read packs and reads back the same.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "input.h"
#include "phonebook/dial_params.h"
#include "phonebook/entry_list.h"
#include "phonebook/entry_properties.h"
#include "phonebook/modem_list.h"
#include "phonebook/ras_error_text.h"
#include "platform/dial_service.h"
#include "platform/dialogs.h"
#include "platform/ras_layout.h"

namespace {

using namespace pelvaro;

// Hands out the input piece by piece: numbers of two bytes, lowest byte first, and texts of so many bytes.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : left_(data, size) {}
  std::uint32_t number() {
    std::uint8_t bytes[2] = {};
    copy(bytes, 2);
    return get32(bytes, 0);
  }
  // A size or a count: mostly a small one, seldom that of a list of more than 256 entries or one that nobody can
  // believe.
  std::uint32_t size() {
    const std::uint32_t n = number();
    if (n < 0xF000) return n % 4096;
    constexpr std::uint32_t kRecord = ras::entry_name::kRecordSize;
    return n < 0xF800 ? kRecord * (257 + n % 64) : n << 16;
  }
  // What the service writes into a buffer of `room` bytes: so many as it says, then nothing.
  void fill(void* to, std::size_t room) { copy(to, std::min<std::size_t>(number(), room)); }

 private:
  void copy(void* to, std::size_t size) {
    const std::size_t n = std::min(size, left_.size());
    if (n != 0) std::memcpy(to, left_.data(), n);
    left_ = left_.subspan(n);
  }
  ConstBytes left_;
};

// Answers every call out of the input.
struct AnyService : DialService {
  explicit AnyService(Input& bytes) : input(bytes) {}

  Input& input;
  std::uint32_t structureSize = 0, entrySize = 0, deviceBytes = 0;

  std::uint32_t getEntryProperties(const char*, const char* entry, void* record, std::uint32_t* size) override {
    if (!record) {
      *size = entry ? entrySize : structureSize;
      return ras::kErrorBufferTooSmall;
    }
    input.fill(record, *size);
    *size = input.size();
    return 0;
  }
  std::uint32_t setEntryProperties(const char*, const char*, void* record, std::uint32_t size) override {
    check(get32({static_cast<const std::uint8_t*>(record), size}, 0) == size || size < 4);
    return 0;
  }
  std::uint32_t list(void* records, std::uint32_t* size, std::uint32_t* count) {
    input.fill(records, *size);
    const std::uint32_t result = input.number() % 4 == 1 ? ras::kErrorBufferTooSmall : 0;
    *size = input.size();
    *count = input.size();
    return result;
  }
  std::uint32_t enumEntries(const char*, void* records, std::uint32_t* size, std::uint32_t* count) override {
    return list(records, size, count);
  }
  std::uint32_t enumConnections(void* records, std::uint32_t* size, std::uint32_t* count) override {
    return list(records, size, count);
  }
  // The first call names the bytes; the second one writes no more than the program then says it has.
  std::uint32_t enumDevices(void* records, std::uint32_t* size, std::uint32_t* count) override {
    if (!records) {
      *size = input.size();
      *count = input.size();
      return ras::kErrorBufferTooSmall;
    }
    input.fill(records, *size);
    return input.number() % 8 == 1 ? 5 : 0;
  }
  std::uint32_t getEntryDialParams(const char*, void* params, std::int32_t* saved) override {
    auto* bytes = static_cast<std::uint8_t*>(params);
    const std::size_t size = get32({bytes, 4}, 0);
    check(std::count(std::begin(ras::dial_params::kSizes), std::end(ras::dial_params::kSizes), size) == 1);
    input.fill(bytes, size);
    *saved = static_cast<std::int32_t>(input.number());
    constexpr std::uint32_t kResults[] = {0, ras::kErrorInvalidSize, ras::kErrorCannotFindPhonebookEntry, 5};
    return kResults[input.number() % 4];
  }
  std::uint32_t dial(const char*, void*, std::uint32_t, std::uintptr_t, RasHandle*) override { return 0; }
  std::uint32_t hangUp(RasHandle) override { return 0; }
  std::uint32_t deleteEntry(const char*, const char*) override { return 0; }
  std::uint32_t editPhonebookEntry(std::uintptr_t, const char*, const char*) override { return 0; }
  std::uint32_t errorString(std::uint32_t, char* text, std::uint32_t size) override {
    input.fill(text, size);
    return 0;
  }
  std::uint32_t formatMessage(std::uint32_t, std::uint32_t, std::uint32_t, char* text, std::uint32_t size) override {
    input.fill(text, size);
    return 0;
  }
};

struct NoDialogs : Dialogs {
  int messageBox(const std::string& text, std::uint32_t) override {
    check(text == "5");
    return kAnswerOk;
  }
  MenuHandle createPopupMenu() override { return 0; }
  void appendMenu(MenuHandle, std::uint32_t, std::uint32_t, const std::string&) override {}
  void cursorPosition(int&, int&) override {}
  std::uintptr_t foregroundWindow() override { return 0; }
  std::uint32_t trackPopupMenu(MenuHandle, std::uint32_t, int, int, std::uintptr_t) override { return 0; }
  void destroyMenu(MenuHandle) override {}
};

struct AnyDevice : DeviceFilter {
  bool wanted() override { return true; }
  bool validateDevice(const std::string& name) override { return name.size() % 2 == 0; }
};

// A record that was read is laid, read and laid again: the same bytes.
void checkPacking(RasEntryRecord record, std::uint32_t structureSize) {
  check(Module1::packEntry(record, structureSize).size() == structureSize + record.AlternateNumbers.size() + 1);
  record.AlternateNumbers.clear();
  const auto laid = Module1::packEntry(record, structureSize);
  RasEntryRecord again;
  Module1::unpackEntry(laid, structureSize, again);
  check(again.AlternateNumbers.empty());
  check(Module1::packEntry(again, structureSize) == laid);
}

void checkParams(AnyService& ras) {
  std::vector<std::uint8_t> params;
  bool saved = false;
  Module1::GetEntryDialParams(ras, params, nullptr, "Corvanti-Work", saved);
  const std::uint32_t size = Module1::acceptedDialParamsSize(ras);
  if (size == 0) return;
  const std::string name =
      Module1::BytesToString(from(ConstBytes(params), pelvaro::ras::dial_params::kEntryName.offset), 300);
  const auto packed = Module1::packDialParams({name, name, name, name, name, name}, size);
  check(packed.size() == size && get32(packed, 0) == size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  AnyService ras(input);
  NoDialogs dialogs;
  ras.structureSize = input.size();
  ras.entrySize = input.size();
  RasEntryRecord record;
  if (Module1::GetEntryProperties(ras, "x", record) == 0) {
    if (ras.structureSize < 100'000) checkPacking(record, ras.structureSize);
    Module1::SetEntryProperties(ras, "x", record);
  }

  check(listEntries(ras).size() <= 256);
  ActiveConnections connections(ras);
  connections.isUp("x");
  connections.isUp(std::string(257, 'x'));
  AnyDevice filter;
  Module1::FillModemList(ras, dialogs, filter, [](const std::string& name) { check(name.size() <= 129); });
  checkParams(ras);
  for (const std::int32_t code : {600, 601}) {
    const std::string text = Module1::RasErrorText(ras, code);
    check(text.size() <= 512 && text.find('\0') == std::string::npos);
  }
  return 0;
}
