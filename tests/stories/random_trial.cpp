#include "random_trial.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "random_child.h"

namespace pelvaro {

namespace {

constexpr unsigned kLongestTrial = 30;  // seconds
constexpr std::string_view kCrash = "crashed: ";

// A line each: the failure, the steps, the events, and the counts.
std::string written(const Lived& lived) {
  std::string failure = lived.failure;
  std::replace(failure.begin(), failure.end(), '\n', ' ');
  std::string text = failure + '\n' + std::to_string(lived.steps) + '\n' + std::to_string(lived.events) + '\n';
  for (const auto& [name, count] : lived.tally) {
    std::string line = name;
    std::replace(line.begin(), line.end(), '\n', ' ');
    text += std::to_string(count) + ' ' + line + '\n';
  }
  return text;
}

Lived read(const std::string& text) {
  std::istringstream lines(text);
  Lived lived;
  std::getline(lines, lived.failure);
  lines >> lived.steps >> lived.events;
  long count = 0;
  for (std::string name; lines >> count && std::getline(lines >> std::ws, name);) lived.tally[name] = count;
  return lived;
}

// The line that tells best what a crash was.
std::string crash(const std::string& said) {
  for (const char* sign : {"runtime error: ", "SUMMARY: ", "terminate called", "Assertion ", "ended by signal "}) {
    const auto at = said.find(sign);
    if (at != std::string::npos) return std::string(kCrash) + said.substr(at, said.find('\n', at) - at);
  }
  return std::string(kCrash) + said.substr(0, 2000);
}

}  // namespace

Lived tryPlan(const Plan& plan, const MakeCheck& makeCheck) {
  const ChildsEnd end = inChild(
      [&] {
        RandomUser user(plan);
        if (makeCheck) user.alsoCheck = makeCheck();
        return written(user.live());
      },
      kLongestTrial);
  if (end.whole) return read(end.said);
  Lived lived;
  lived.failure = crash(end.said);
  lived.steps = plan.size();
  return lived;
}

bool sameFailure(const std::string& one, const std::string& other) {
  const auto key = [](std::string text) {
    if (!text.starts_with(kCrash)) text.resize(std::min(text.size(), text.find(':')));
    std::erase_if(text, [](unsigned char character) { return std::isdigit(character) != 0; });
    return text;
  };
  return key(one) == key(other);
}

Plan shrunkPlan(Plan plan, const Lived& lived, const MakeCheck& makeCheck, std::chrono::milliseconds longest) {
  const auto until = std::chrono::steady_clock::now() + longest;
  plan.resize(std::min(plan.size(), lived.steps));
  return shrunk(std::move(plan), [&](const Plan& candidate) {
    if (std::chrono::steady_clock::now() >= until) return false;
    return sameFailure(tryPlan(candidate, makeCheck).failure, lived.failure);
  });
}

std::string shrunkReport(Plan plan, const Lived& lived, const MakeCheck& makeCheck) {
  const Plan shortest = shrunkPlan(std::move(plan), lived, makeCheck);
  return lived.failure + "\n  " + std::to_string(shortest.size()) + " steps are enough:\n  PELVARO_RANDOM_PLAN='" +
         textOf(RandomUser::kinds(), shortest) + "'\n";
}

}  // namespace pelvaro
