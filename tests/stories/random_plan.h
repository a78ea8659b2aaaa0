// What a random user is to do, step by step: made from a number, written down and read again, and cut down to what a
// failure needs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pelvaro {

// Random numbers that are the same everywhere. Cheap to make, for every step has its own.
class Dice {
 public:
  explicit Dice(std::uint64_t seed = 0) : state_(seed) {}
  std::uint32_t roll();
  // A number from 0 to `below` - 1.
  int pick(int below) { return static_cast<int>(roll() % static_cast<std::uint32_t>(below)); }
  bool oneIn(int many) { return pick(many) == 0; }
  template <typename T, std::size_t N>
  const T& of(const T (&choices)[N]) {
    return choices[roll() % N];
  }

 private:
  std::uint64_t state_;
};

// One of the things that a user, the phones or the system can do.
struct KindOfStep {
  const char* name;
  int weight;  // how often it comes, beside the others
};

// A kind, by its place in the table of kinds, and the number that its own randomness comes from: without the steps
// before it a step draws the same.
struct Step {
  std::size_t kind;
  std::uint32_t seed;
  bool operator==(const Step&) const = default;
};
using Plan = std::vector<Step>;
using Kinds = std::vector<KindOfStep>;

// The place of a kind in the table; one that is not there ends the test.
std::size_t kindNamed(const Kinds& kinds, std::string_view name);
Plan planOf(const Kinds& kinds, std::uint32_t seed, std::size_t steps);

// "connect:17 wait:4", and back; nothing when that cannot be read.
std::string textOf(const Kinds& kinds, const Plan& plan);
std::optional<Plan> parsePlan(const Kinds& kinds, std::string_view text);

// Leaves out what it can, halves first and single steps last, for as long as what is left still fails. Asks at most
// `trials` times.
Plan shrunk(Plan plan, const std::function<bool(const Plan&)>& stillFails, int trials = 2000);

}  // namespace pelvaro
