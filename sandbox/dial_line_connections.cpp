// The practice line's connections: dialing step by step, hanging up, telling about it.
#include <algorithm>
#include <cstdio>

#include "bytes.h"
#include "codes.h"
#include "connection.h"
#include "dial_line.h"
#include "dial_params.h"

namespace pelvaro::line {
namespace {

// The states of a dial; the last is the scenario's.
constexpr std::uint32_t kStates[] = {kOpenPort,        kPortOpened,          kConnectDevice,
                                     kDeviceConnected, kAllDevicesConnected, kAuthenticate,
                                     kAuthenticated,   kProjected,           kLogonNetwork};
constexpr std::size_t kLastState = std::size(kStates);

constexpr std::size_t kMostConnections = 1024;

// RASCONNSTATUSA: without and with the telephone number.
constexpr std::uint32_t kStatusSizes[] = {160, 288};

std::string hexText(std::uint32_t number) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(number));
  return text;
}

}  // namespace

std::uint32_t DialLine::dial(const char* phonebook, const void* params, std::uint32_t notifierType,
                             std::uintptr_t notifier, std::uint32_t* connection) {
  if (const auto code = planted("dial")) return done("dial", "", code);
  if (!params || !connection) return done("dial", "", kInvalidParameter);
  if (!isDefault(phonebook)) return done("dial", "", kCannotOpenPhonebook);
  if (!acceptsParams(getNumber(params))) return done("dial", "", kInvalidSize);
  const DialParams asked = unpackDialParams(params);
  const std::string arguments = "entry=" + asked.entryName + " number=" + asked.number + " user=" + asked.user;
  if (*connection != 0) return done("dial", arguments, kInvalidHandle);
  if (notifierType != ras::kNotifierWindow || notifier == 0) return done("dial", arguments, kInvalidParameter);
  const Entry* entry = asked.entryName.empty() ? nullptr : findEntry(asked.entryName);
  if (!entry) return done("dial", arguments, kCannotFindEntry);
  for (const auto& other : connections_)
    if (other->phase == Connection::Phase::kDialing && lowered(other->entryName) == lowered(entry->name))
      return done("dial", arguments, kDialInProgress);

  const ReadableFields fields = readableFields(entry->record);
  auto fresh = std::make_unique<Connection>();
  fresh->handle = ++lastHandle_;
  fresh->window = notifier;
  fresh->entryName = entry->name;
  fresh->deviceName = fields.device;
  if (const Device* device = findDevice(fields.device)) {
    fresh->deviceType = device->type;
    fresh->portName = device->port;
  }
  fresh->call.number = asked.number.empty() ? fields.number : asked.number;
  fresh->call.suffix = fields.suffix;
  fresh->call.user = asked.user;
  fresh->call.password = asked.password == kMaskedPassword && entry->passwordSaved ? entry->password : asked.password;
  *connection = fresh->handle;
  forgetOldestFailed();
  connections_.push_back(std::move(fresh));
  layConnections();
  return done("dial", arguments + " handle=" + hexText(*connection), kSuccess);
}

std::uint32_t DialLine::hangUp(std::uint32_t handle) {
  const std::string arguments = "handle=" + hexText(handle);
  if (const auto code = planted("hangUp")) return done("hangUp", arguments, code);
  const auto found =
      std::find_if(connections_.begin(), connections_.end(), [handle](const auto& c) { return c->handle == handle; });
  if (found == connections_.end()) return done("hangUp", arguments, kInvalidHandle);
  (*found)->release();
  connections_.erase(found);
  std::erase_if(events_, [handle](const Event& event) { return event.connection == handle; });
  layConnections();
  countTraffic();
  return done("hangUp", arguments, kSuccess);
}

std::uint32_t DialLine::getConnectStatus(std::uint32_t handle, void* record) {
  if (const auto code = planted("getConnectStatus")) return code;
  if (!record) return kInvalidParameter;
  const std::uint32_t size = getNumber(record);
  if (size != kStatusSizes[0] && size != kStatusSizes[1]) return kInvalidSize;
  const Connection* connection = findConnection(handle);
  if (!connection) return kInvalidHandle;
  auto* bytes = static_cast<std::uint8_t*>(record);
  putNumber(bytes + 4, connection->state);
  putNumber(bytes + 8, connection->error);
  putText(bytes + 12, 17, connection->deviceType);
  putText(bytes + 29, 129, connection->deviceName);
  if (size == kStatusSizes[1]) putText(bytes + 158, 129, connection->call.number);
  return kSuccess;
}

bool DialLine::dialing() const {
  return !events_.empty() || std::any_of(connections_.begin(), connections_.end(),
                                         [](const auto& c) { return c->phase == Connection::Phase::kDialing; });
}

void DialLine::step(std::uint64_t nowMs) {
  now_ = nowMs;
  for (const auto& connection : connections_) advance(*connection, nowMs);
  if (std::erase_if(connections_, [](const auto& c) { return c->phase == Connection::Phase::kGone; })) layConnections();
  countTraffic();
  // Told only now, one by one: whoever is told may hang up, dial or step again.
  while (!events_.empty()) {
    const Event event = events_.front();
    events_.pop_front();
    note("notify state=" + hexText(event.state) + " error=" + std::to_string(event.error));
    if (callbacks_.notify) callbacks_.notify(event.window, event.state, event.error);
  }
}

void DialLine::advance(Connection& c, std::uint64_t nowMs) {
  using Phase = Connection::Phase;
  if (c.phase == Phase::kFailed || c.phase == Phase::kGone) return;
  if (c.phase == Phase::kUp) {
    if (!c.port->gone() && c.dialogue->stillUp()) return;
    c.release();
    c.phase = Phase::kGone;
    return;
  }
  if (!c.begun) return enter(c, 0, nowMs);
  if (c.port && c.port->gone()) return fail(c, kPortDisconnected);
  if (nowMs - c.since >= scenario_.pace && stateDone(c, nowMs)) enter(c, c.position + 1, nowMs);
}

// Whether the work of the connection's state is done. May fail the connection.
bool DialLine::stateDone(Connection& c, std::uint64_t nowMs) {
  using Result = ModemDialogue::Result;
  Result result = Result::kDone;
  if (c.state == kOpenPort) return openPort(c);
  if (c.state == kConnectDevice) result = c.dialogue->connect(nowMs, scenario_.timeout);
  if (c.state == kAuthenticate) result = c.dialogue->logIn(nowMs, scenario_.timeout);
  if (result == Result::kFailed) fail(c, c.dialogue->error());
  return result == Result::kDone;
}

bool DialLine::openPort(Connection& c) {
  std::uint32_t error = c.portName.empty() ? kDeviceNotFound : portTaken(c) ? kPortNotAvailable : kSuccess;
  if (error == kSuccess) c.port = ports_.open(c.portName, error);
  if (!c.port) {
    fail(c, error);
    return false;
  }
  c.holdsPort = true;
  c.dialogue = std::make_unique<ModemDialogue>(*c.port, c.call);
  return true;
}

void DialLine::enter(Connection& c, std::size_t position, std::uint64_t nowMs) {
  c.begun = true;
  c.position = position;
  c.since = nowMs;
  c.state = position < kLastState ? kStates[position] : scenario_.end;
  tell(c, c.state, kSuccess);
  if (position < kLastState) return;
  if (c.state == kDisconnected) {
    c.release();
    c.phase = Connection::Phase::kFailed;
  } else {
    c.phase = Connection::Phase::kUp;
  }
  layConnections();
}

// The connection keeps its place and its port until it is hung up, as the real service wants it.
void DialLine::fail(Connection& c, std::uint32_t error) {
  c.error = error;
  c.release();
  c.phase = Connection::Phase::kFailed;
  tell(c, c.state, error);
  layConnections();
}

// Traffic runs only through what is up, not through what is dialing or has failed.
void DialLine::countTraffic() {
  counters_.setUp(std::any_of(connections_.begin(), connections_.end(),
                              [](const auto& c) { return c->phase == Connection::Phase::kUp; }),
                  now_);
}

// A program that never hangs up what has failed does not fill the line for good.
void DialLine::forgetOldestFailed() {
  if (connections_.size() < kMostConnections) return;
  const auto failed = std::find_if(connections_.begin(), connections_.end(),
                                   [](const auto& c) { return c->phase == Connection::Phase::kFailed; });
  if (failed != connections_.end()) connections_.erase(failed);
}

void DialLine::tell(const Connection& c, std::uint32_t state, std::uint32_t error) {
  events_.push_back({c.handle, c.window, state, error});
}

DialLine::Connection* DialLine::findConnection(std::uint32_t handle) {
  for (const auto& connection : connections_)
    if (connection->handle == handle) return connection.get();
  return nullptr;
}

// Whether another connection that came before holds the same port.
bool DialLine::portTaken(const Connection& by) const {
  return std::any_of(connections_.begin(), connections_.end(), [&by](const auto& other) {
    return other.get() != &by && other->holdsPort && other->portName == by.portName;
  });
}

}  // namespace pelvaro::line
