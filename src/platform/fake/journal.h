// One journal of everything that a test's fakes were asked to do, in order.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace pelvaro::fake {

class Journal {
 public:
  void add(std::string line) { lines_.push_back(std::move(line)); }
  const std::vector<std::string>& lines() const { return lines_; }
  // The lines so far; the journal is empty afterwards.
  std::vector<std::string> take() { return std::exchange(lines_, {}); }

 private:
  std::vector<std::string> lines_;
};

using Lines = std::vector<std::string>;

}  // namespace pelvaro::fake
