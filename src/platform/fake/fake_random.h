// Random numbers for tests: first those that the test has planted, then always the same row of others.
#pragma once

#include <deque>

#include "platform/random_source.h"

namespace pelvaro::fake {

struct FakeRandom : RandomSource {
  std::deque<double> planted;
  int drawn = 0;

  double next() override {
    ++drawn;
    if (planted.empty()) return others_.next();
    const double value = planted.front();
    planted.pop_front();
    return value;
  }

 private:
  SeededRandom others_{1};
};

}  // namespace pelvaro::fake
