#include "scenario.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "bytes.h"
#include "entry_record.h"
#include "platform/ras_layout.h"

namespace pelvaro::line {
namespace {

constexpr const char* kVerbs[] = {"getEntryProperties", "setEntryProperties", "enumEntries", "enumDevices",
                                  "getEntryDialParams", "setEntryDialParams", "dial",        "hangUp",
                                  "enumConnections",    "getConnectStatus",   "deleteEntry", "validateEntryName",
                                  "editPhonebookEntry", "errorString",        "getIfTable"};
constexpr std::uint32_t kMostExtras = 100000;

using Words = std::vector<std::string>;

Words wordsOf(std::string_view line) {
  Words words;
  for (line = trimmed(line); !line.empty(); line = trimmed(line)) {
    const auto end = std::min(line.find_first_of(" \t"), line.size());
    words.emplace_back(line.substr(0, end));
    line.remove_prefix(end);
  }
  return words;
}

// A decimal number, or a hexadecimal one behind "0x".
bool parseNumber(std::string_view text, std::uint32_t& value, std::uint32_t most = 0xFFFFFFFF) {
  const int base = text.starts_with("0x") ? 16 : 10;
  if (base == 16) text.remove_prefix(2);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  return error == std::errc() && end == text.data() + text.size() && value <= most;
}

bool parseSwitch(const std::string& text, bool& value) {
  value = text == "on";
  return value || text == "off";
}

// "fail VERB CODE" or "fail VERB CODE times N".
bool readFailure(const Words& words, Scenario& scenario) {
  if (words.size() != 3 && (words.size() != 5 || words[3] != "times")) return false;
  PlantedFailure failure{words[1], 0, PlantedFailure::kAlways};
  if (std::find(std::begin(kVerbs), std::end(kVerbs), failure.verb) == std::end(kVerbs)) return false;
  if (!parseNumber(words[2], failure.code)) return false;
  if (words.size() == 5 && !parseNumber(words[4], failure.times)) return false;
  scenario.failures.push_back(std::move(failure));
  return true;
}

// "dialParamsSizes 1052 816"; without any number no size is accepted.
bool readSizes(const Words& words, Scenario& scenario) {
  scenario.dialParamsSizes.clear();
  for (std::size_t i = 1; i < words.size(); ++i) {
    std::uint32_t size = 0;
    if (!parseNumber(words[i], size)) return false;
    constexpr auto& known = ras::dial_params::kSizes;
    if (std::find(std::begin(known), std::end(known), size) == std::end(known)) return false;
    scenario.dialParamsSizes.push_back(size);
  }
  return true;
}

bool readLine(const Words& words, Scenario& scenario) {
  if (words[0] == "fail") return readFailure(words, scenario);
  if (words[0] == "dialParamsSizes") return readSizes(words, scenario);
  if (words.size() != 2) return false;
  const std::string& value = words[1];
  if (words[0] == "pace") return parseNumber(value, scenario.pace);
  if (words[0] == "timeout") return parseNumber(value, scenario.timeout);
  if (words[0] == "entries") return parseNumber(value, scenario.entries, kMostExtras);
  if (words[0] == "connections") return parseNumber(value, scenario.connections, kMostExtras);
  if (words[0] == "listDialing") return parseSwitch(value, scenario.listDialing);
  if (words[0] == "journal") return parseSwitch(value, scenario.journal);
  if (words[0] == "receiveRate") return parseNumber(value, scenario.receiveRate);
  if (words[0] == "sendRate") return parseNumber(value, scenario.sendRate);
  if (words[0] == "receivedAtStart") return parseNumber(value, scenario.receivedAtStart);
  if (words[0] == "sentAtStart") return parseNumber(value, scenario.sentAtStart);
  if (words[0] == "ethernet") return parseSwitch(value, scenario.ethernet);
  if (words[0] == "structureSize")
    return parseNumber(value, scenario.structureSize) && isRecordSize(scenario.structureSize);
  if (words[0] == "end")
    return parseNumber(value, scenario.end) &&
           (scenario.end == 0x1000 || scenario.end == 0x2000 || scenario.end == 0x2001);
  return false;
}

}  // namespace

std::uint32_t takePlanted(std::vector<PlantedFailure>& failures, std::string_view verb) {
  for (PlantedFailure& failure : failures) {
    if (failure.times == 0 || failure.verb != verb) continue;
    if (failure.times != PlantedFailure::kAlways) --failure.times;
    return failure.code;
  }
  return 0;
}

std::optional<Scenario> parseScenario(std::string_view text, std::string& message) {
  Scenario scenario;
  for (int number = 1; !text.empty(); ++number) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    const Words words = wordsOf(line.substr(0, line.find('#')));
    if (words.empty() || readLine(words, scenario)) continue;
    message = "line " + std::to_string(number) + ": this is not understood: " + std::string(line);
    return std::nullopt;
  }
  return scenario;
}

}  // namespace pelvaro::line
