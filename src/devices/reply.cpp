#include "devices/reply.h"

#include <algorithm>

#include "base/text.h"
#include "devices/brand.h"

namespace pelvaro::devices {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kOk = "OK";
constexpr std::string_view kError = "error";

// Of a longer line only the end is kept, this much of it at least. A phone's own line is a thousand times shorter, and
// no modem key (255 characters) contains a brand of that length: for noise the answer stays no.
constexpr std::size_t kLongestLine = 1 << 16;

bool canNameMaker(std::string_view line) {
  if (contains(line, "AT") || contains(line, "ERROR") || contains(line, kOk)) return false;
  return std::any_of(line.begin(), line.end(), [](char c) { return isCapitalLetter(c) || isSmallLetter(c); });
}

}  // namespace

void Reply::append(std::string_view arrived) {
  const std::size_t before = rest_.size();
  rest_ += arrived;
  // Neither word holds a line end, so one that is cut has its beginning in the unfinished line.
  const auto fresh = std::string_view(rest_).substr(before - std::min(before, kError.size() - 1));
  saysOk_ = saysOk_ || contains(fresh, kOk);
  saysError_ = saysError_ || contains(fresh, kError);

  std::size_t start = 0;
  for (auto end = rest_.find(kLineEnd, before - std::min<std::size_t>(before, 1)); end != std::string::npos;
       end = rest_.find(kLineEnd, start)) {
    if (!named_) {
      line_.assign(rest_, start, end - start);
      named_ = canNameMaker(line_);
    }
    start = end + kLineEnd.size();
  }
  rest_.erase(0, start);
  if (rest_.size() > 2 * kLongestLine) rest_.erase(0, rest_.size() - kLongestLine);
}

std::string_view Reply::manufacturerLine() const { return named_ || trimmed(rest_).empty() ? line_ : rest_; }

}  // namespace pelvaro::devices
