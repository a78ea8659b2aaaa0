// The lines of an operator list file. Key characters may be NUL or LF, so nothing but CR LF ends a line.
#pragma once

#include <cstddef>
#include <string_view>

namespace pelvaro::operators {

constexpr std::string_view kLineEnd = "\r\n";

// Goes over the lines of a file's bytes. The last line need not be ended; behind a last CR LF there is none.
class ListLines {
 public:
  explicit ListLines(std::string_view bytes) : rest_(bytes) {}

  // Goes to the next line, the first one to begin with. False when there is none.
  bool next() {
    if (rest_.empty()) return false;
    const auto end = lineEnd(rest_);
    ended_ = end != std::string_view::npos;
    line_ = rest_.substr(0, end);
    rest_.remove_prefix(ended_ ? end + kLineEnd.size() : rest_.size());
    ++number_;
    return true;
  }
  std::string_view line() const { return line_; }
  std::size_t number() const { return number_; }  // from 1
  bool ended() const { return ended_; }           // by CR LF

 private:
  // The place of the first CR LF: of two neighbours only one need be looked at.
  static std::size_t lineEnd(std::string_view bytes) {
    for (std::size_t i = 1; i < bytes.size(); i += 2) {
      if (bytes[i] > kLineEnd[0]) continue;
      if (bytes[i] == kLineEnd[1] && bytes[i - 1] == kLineEnd[0]) return i - 1;
      if (bytes[i] == kLineEnd[0] && i + 1 < bytes.size() && bytes[i + 1] == kLineEnd[1]) return i;
    }
    return std::string_view::npos;
  }

  std::string_view rest_, line_;
  std::size_t number_ = 0;
  bool ended_ = false;
};

}  // namespace pelvaro::operators
