// Any bytes as what the dial-up service puts into the program's buffers: entries of any size, lists of entries, devices
// and connections with any sizes and counts. Nothing may be read or written outside a buffer, and what is read packs
// and reads back the same.
#include <cstdlib>
#include <cstring>

#include "phonebook/dial_params.h"
#include "phonebook/entry_list.h"
#include "phonebook/entry_properties.h"
#include "phonebook/modem_list.h"
#include "platform/fake/fake_dial_service.h"
#include "platform/fake/fake_dialogs.h"

namespace {

using namespace pelvaro;

// Hands out the input piece by piece.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : left_(data, size) {}
  std::uint32_t number() {
    std::uint8_t bytes[4] = {};
    take(bytes, 4);
    return get32(bytes, 0);
  }
  // A number that is small more often than not.
  std::uint32_t size() {
    const std::uint32_t n = number();
    return n & 1 ? n >> 1 : (n >> 1) % 6000;
  }
  void take(void* to, std::size_t size) {
    const std::size_t n = std::min(size, left_.size());
    std::memcpy(to, left_.data(), n);
    left_ = left_.subspan(n);
  }

 private:
  ConstBytes left_;
};

struct AnyDevice : DeviceFilter {
  bool wanted() override { return true; }
  bool validateDevice(const std::string& name) override { return name.size() % 2 == 0; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  fake::Journal journal;
  fake::FakeDialService ras(journal);
  fake::FakeDialogs dialogs(journal);

  const std::uint32_t structureSize = input.size();
  const std::uint32_t entrySize = input.size();
  std::uint32_t lastSize = 0;
  ras.onGetEntry = [&](const char* entry, void* record, std::uint32_t* given) -> std::uint32_t {
    if (!record) {
      *given = lastSize = entry ? entrySize : structureSize;
      return 603;
    }
    input.take(record, *given);
    *given = input.number();
    return 0;
  };
  RasEntryRecord record;
  if (Module1::GetEntryProperties(ras, "x", record) == 0 && structureSize < 100'000) {
    const auto packed = Module1::packEntry(record, structureSize);
    if (packed.size() != structureSize + record.AlternateNumbers.size() + 1) std::abort();
    Module1::SetEntryProperties(ras, "x", record);
  }

  const auto list = [&](void* records, std::uint32_t* given, std::uint32_t* count) -> std::uint32_t {
    if (records) input.take(records, *given);
    const std::uint32_t result = input.number() % 4 == 0 ? 603 : 0;
    *given = input.size();
    *count = input.size();
    return result;
  };
  ras.onEnumEntries = list;
  if (listEntries(ras).size() > 256) std::abort();
  ras.onEnumConnections = list;
  ActiveConnections connections(ras);
  connections.isUp("x");
  connections.isUp(std::string(257, 'x'));
  std::uint32_t deviceBytes = 0;
  ras.onEnumDevices = [&](void* records, std::uint32_t* given, std::uint32_t* count) -> std::uint32_t {
    // The first call names the bytes; the second one writes no more than the program then says it has.
    if (!records) {
      deviceBytes = *given = input.size();
      *count = input.size();
      return 603;
    }
    input.take(records, *given);
    return 0;
  };
  AnyDevice filter;
  Module1::FillModemList(ras, dialogs, filter, [](const std::string& name) {
    if (name.size() > 129) std::abort();
  });
  return 0;
}
