// How the cost of whatever can grow does grow, over 1, 10, 100 and 1,000 times the data: in a straight line a step to
// ten times as much costs ten times, with the square a hundred. More than fifteen, which leaves room for what no longer
// fits into a cache, is a limit missed. Native. Ends with 1 then.
//   growth_bench LIST...     four operator lists, each with ten times the records of the one before
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>

#include "alternating.h"
#include "devices/reply.h"
#include "drivers/fake_machine.h"
#include "limits.h"
#include "monitor/traffic.h"
#include "operators/mod_encrypt.h"
#include "operators/operator_list.h"
#include "phonebook/entry_list.h"
#include "phonebook/modem_list.h"
#include "platform/fake/fake_dial_service.h"
#include "platform/if_table_layout.h"
#include "platform/ras_layout.h"

namespace {

using namespace pelvaro;

using Sizes = std::vector<std::size_t>;
constexpr double kMostOfAStep = 1.5;  // of what a straight line would give

std::size_t g_seen = 0;  // so that no result is left out

// Microseconds of one call: the median of some turns, each long enough for the clock.
double timeOf(const std::function<void()>& work) {
  constexpr double kTurn = 2000;
  std::size_t calls = 1;
  const auto turn = [&] {
    return microseconds([&] {
      for (std::size_t i = 0; i < calls; ++i) work();
    });
  };
  while (turn() < kTurn) calls *= 2;
  std::vector<double> turns(9);
  for (double& time : turns) time = turn() / static_cast<double>(calls);
  return median(turns);
}

std::string figures(const char* before, const char* format, const std::vector<double>& values) {
  std::string all;
  for (const double value : values) {
    if (!all.empty()) all += ' ';
    char number[32];
    std::snprintf(number, sizeof number, format, value);
    all += before;
    all += number;
  }
  return all;
}

Sizes fourTimes(std::size_t unit) { return {unit, 10 * unit, 100 * unit, 1000 * unit}; }

// `prepare` makes the data of a size and gives the work on it.
void judgeGrowth(Limits& limits, const std::string& what, const Sizes& sizes,
                 const std::function<std::function<void()>(std::size_t)>& prepare) {
  std::vector<double> times, steps, counts;
  bool straight = true;
  for (const std::size_t size : sizes) {
    times.push_back(timeOf(prepare(size)));
    counts.push_back(static_cast<double>(size));
    if (times.size() < 2) continue;
    steps.push_back(times.back() / times[times.size() - 2]);
    straight = straight && steps.back() <= kMostOfAStep * counts.back() / counts[counts.size() - 2];
  }
  limits.judge(straight, {"growth: " + what, figures("", "%.3g", times) + " us", "for " + figures("", "%.0f", counts),
                          figures("x", "%.1f", steps), text("x%.1f of a straight line", kMostOfAStep)});
}

struct Records {
  std::vector<std::uint8_t> bytes;
  std::size_t recordSize;
  // As an enumeration gives them: all when the buffer holds them, else the size that would.
  std::uint32_t give(void* to, std::uint32_t* size, std::uint32_t* count) const {
    const std::uint32_t given = to ? *size : 0;
    *size = static_cast<std::uint32_t>(bytes.size());
    *count = static_cast<std::uint32_t>(bytes.size() / recordSize);
    if (given < bytes.size()) return ras::kErrorBufferTooSmall;
    std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(to));
    return 0;
  }
};

Records named(std::size_t count, std::size_t recordSize, std::size_t at, const std::string& name) {
  Records made{std::vector<std::uint8_t>(count * recordSize), recordSize};
  for (std::size_t i = 0; i < count; ++i) {
    put32(made.bytes, i * recordSize, static_cast<std::uint32_t>(recordSize));
    const std::string whole = name + std::to_string(i);
    std::copy(whole.begin(), whole.end(), made.bytes.begin() + static_cast<std::ptrdiff_t>(i * recordSize + at));
  }
  return made;
}

struct AnyDevice : DeviceFilter {
  bool wanted() override { return false; }
  bool validateDevice(const std::string&) override { return true; }
};

struct Service {
  fake::Journal journal;
  fake::FakeDialService ras{journal};
  fake::FakeDialogs dialogs{journal};
};

void measureService(Limits& limits) {
  judgeGrowth(limits, "one poll, connections, of which 256 fit", {1, 10, 100, 256}, [](std::size_t count) {
    const auto service = std::make_shared<Service>();
    const auto records =
        named(count, ras::connection::kRecordSize, ras::connection::kEntryName.offset, "Corvanti-Office ");
    service->ras.onEnumConnections = [records](void* to, auto* size, auto* n) { return records.give(to, size, n); };
    const auto connections = std::make_shared<ActiveConnections>(service->ras);
    return [service, connections] {
      g_seen += connections->isUp("Corvanti-Office -") ? 1 : 0;
      service->journal.take();
    };
  });
  judgeGrowth(limits, "entries listed, 256 shown", fourTimes(1), [](std::size_t count) {
    const auto service = std::make_shared<Service>();
    const auto records = named(count, ras::entry_name::kRecordSize, ras::entry_name::kName.offset, "Corvanti ");
    service->ras.onEnumEntries = [records](void* to, auto* size, auto* n) { return records.give(to, size, n); };
    return [service] {
      g_seen += listEntries(service->ras).size();
      service->journal.take();
    };
  });
  judgeGrowth(limits, "modems listed", fourTimes(1), [](std::size_t count) {
    const auto service = std::make_shared<Service>();
    Records records = named(count, ras::device::kRecordSize, ras::device::kName.offset, "Nokia ");
    for (std::size_t i = 0; i < count; ++i) {
      const std::string type = "modem";
      std::copy(
          type.begin(), type.end(),
          records.bytes.begin() + static_cast<std::ptrdiff_t>(i * records.recordSize + ras::device::kType.offset));
    }
    service->ras.onEnumDevices = [records](void* to, auto* size, auto* n) { return records.give(to, size, n); };
    return [service] {
      AnyDevice filter;
      Module1::FillModemList(service->ras, service->dialogs, filter,
                             [](const std::string& name) { g_seen += name.size(); });
      service->journal.take();
    };
  });
}

void measureTraffic(Limits& limits) {
  judgeGrowth(limits, "one tick, interfaces in front of the Ethernet", fourTimes(10), [](std::size_t count) {
    std::vector<std::uint8_t> bytes(if_table::kFirstRow + count * if_table::kRowSize);
    put32(bytes, 0, static_cast<std::uint32_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
      put32(bytes, if_table::kFirstRow + i * if_table::kRowSize + if_table::kType, i + 1 == count ? 6 : 24);
    }
    return [bytes] { g_seen += monitor::firstEthernet(bytes)->received + 1; };
  });
}

void measureReplies(Limits& limits) {
  judgeGrowth(limits, "a phone's talk, bytes in pieces of 64", fourTimes(256), [](std::size_t size) {
    std::string talk;
    while (talk.size() < size) talk += "+CIEV: 7,0 *\r\n";
    talk.resize(size);
    return [talk] {
      devices::Reply reply;
      for (std::size_t i = 0; i < talk.size(); i += 64) {
        reply.append(std::string_view(talk).substr(i, 64));
        g_seen += reply.ended() ? 1 : 2;
      }
    };
  });
}

void measureDrivers(Limits& limits) {
  judgeGrowth(limits, "files of a driver installed", fourTimes(1), [](std::size_t count) {
    const auto machine = std::make_shared<drivers::FakeMachine>();
    for (std::size_t i = 0; i < count; ++i) {
      machine->files.contents[drivers::FakeMachine::kPackage + std::to_string(i) + ".sys"] = "driver";
    }
    return [machine] {
      machine->installer.install("06");
      g_seen += machine->journal.take().size();
    };
  });
}

void measureLists(Limits& limits, char** paths) {
  std::map<std::size_t, std::string> files;  // by their records
  Sizes sizes;
  for (int i = 0; i < 4; ++i) {
    std::ifstream file(paths[i], std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    sizes.push_back(operators::OperatorList(bytes).size());
    files.emplace(sizes.back(), std::move(bytes));
  }
  judgeGrowth(limits, "operator list loaded, a country's records found", sizes, [&](std::size_t size) {
    const std::string& file = files.at(size);
    return [&file] {
      const operators::OperatorList list(file);
      const auto places = list.places();
      g_seen += places.size() + list.rowsOf(places.back()).size();
    };
  });
  judgeGrowth(limits, "operator list made into the bytes of its file", sizes, [&](std::size_t size) {
    const auto list = std::make_shared<operators::OperatorList>(files.at(size));
    return [list] {
      SeededRandom random(1);
      g_seen += list->bytes(random).size();
    };
  });
}

}  // namespace

int main(int count, char** arguments) try {
  if (count != 5) return std::fprintf(stderr, "usage: growth_bench LIST LIST LIST LIST\n"), 2;
  Limits limits;
  measureLists(limits, arguments + 1);
  measureService(limits);
  measureTraffic(limits);
  measureReplies(limits);
  measureDrivers(limits);
  if (g_seen == 0) return std::fputs("nothing was done\n", stderr), 2;
  return limits.exitCode();
} catch (...) {
  std::fputs("it broke off\n", stderr);
  return 2;
}
