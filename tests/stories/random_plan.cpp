#include "random_plan.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace pelvaro {

std::uint32_t Dice::roll() {
  std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15ull;
  mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9ull;
  mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBull;
  return static_cast<std::uint32_t>((mixed ^ (mixed >> 31)) >> 32);
}

std::size_t kindNamed(const Kinds& kinds, std::string_view name) {
  for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
    if (kinds[kind].name == name) return kind;
  }
  throw std::logic_error("no kind of step is called " + std::string(name));
}

Plan planOf(const Kinds& kinds, std::uint32_t seed, std::size_t steps) {
  std::vector<std::size_t> bag;
  for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
    bag.insert(bag.end(), static_cast<std::size_t>(kinds[kind].weight), kind);
  }
  Dice dice(seed);
  Plan plan(steps);
  for (Step& step : plan) {
    step.kind = bag[dice.roll() % bag.size()];
    step.seed = dice.roll();
  }
  return plan;
}

std::string textOf(const Kinds& kinds, const Plan& plan) {
  std::string text;
  for (const Step& step : plan) {
    if (!text.empty()) text += ' ';
    text += std::string(kinds[step.kind].name) + ':' + std::to_string(step.seed);
  }
  return text;
}

std::optional<Plan> parsePlan(const Kinds& kinds, std::string_view text) {
  Plan plan;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    if (word.empty()) continue;
    const auto colon = word.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                   [&](const KindOfStep& known) { return known.name == word.substr(0, colon); });
    std::uint32_t seed = 0;
    const auto [end, error] = std::from_chars(word.data() + colon + 1, word.data() + word.size(), seed);
    if (kind == kinds.end() || error != std::errc() || end != word.data() + word.size()) return std::nullopt;
    plan.push_back({static_cast<std::size_t>(kind - kinds.begin()), seed});
  }
  return plan;
}

Plan shrunk(Plan plan, const std::function<bool(const Plan&)>& stillFails, int trials) {
  std::size_t piece = std::max<std::size_t>(1, plan.size() / 2);
  while (trials > 0) {
    bool shorter = false;
    for (std::size_t at = 0; at < plan.size() && trials > 0; --trials) {
      const auto from = plan.begin() + static_cast<std::ptrdiff_t>(at);
      const auto to = plan.begin() + static_cast<std::ptrdiff_t>(std::min(at + piece, plan.size()));
      Plan candidate(plan.begin(), from);
      candidate.insert(candidate.end(), to, plan.end());
      if (stillFails(candidate)) {
        plan = std::move(candidate);
        shorter = true;
      } else {
        at += piece;
      }
    }
    if (piece > 1) {
      piece /= 2;
    } else if (!shorter) {
      break;
    }
  }
  return plan;
}

}  // namespace pelvaro
