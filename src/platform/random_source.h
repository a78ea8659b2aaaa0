// Random numbers.
#pragma once

#include <cstdint>
#include <random>

namespace pelvaro {

struct RandomSource {
  virtual ~RandomSource() = default;
  // Uniform, at least 0 and below 1.
  virtual double next() = 0;
};

// The same numbers for the same seed, on every system.
class SeededRandom : public RandomSource {
 public:
  explicit SeededRandom(std::uint32_t seed) : engine_(seed) {}
  double next() override { return static_cast<double>(engine_()) / 4294967296.0; }

 private:
  std::mt19937 engine_;
};

}  // namespace pelvaro
