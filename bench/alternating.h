// The times of two pieces of work, taken by turns so that both see the same machine. For the native programs. It is the
// processor's time: neither of them waits for anything, and a long piece would be interrupted more by what else runs.
#pragma once

#include <time.h>

#include <utility>
#include <vector>

#include "limits.h"

namespace pelvaro {

inline double processorTime() {
  timespec now{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return 1e6 * static_cast<double>(now.tv_sec) + 1e-3 * static_cast<double>(now.tv_nsec);
}

template <typename Work>
double microseconds(const Work& work) {
  const double begin = processorTime();
  work();
  return processorTime() - begin;
}

// The medians in microseconds, of so many rounds of ten turns each. Ten in a row, because the first may have to sort
// out the memory that the other one's have freed; the medians leave that out.
template <typename One, typename Other>
std::pair<double, double> alternating(int rounds, const One& one, const Other& other) {
  std::vector<double> first, second;
  for (int i = 0; i < rounds; ++i) {
    for (int turn = 0; turn < 10; ++turn) second.push_back(microseconds(other));
    for (int turn = 0; turn < 10; ++turn) first.push_back(microseconds(one));
  }
  return {median(first), median(second)};
}

}  // namespace pelvaro
