// What phones say to commands, taken piece by piece as it arrives: whether an answer has ended, and the line that names
// the maker. Used by the probe; text in, value out.
#pragma once

#include <string>
#include <string_view>

namespace pelvaro::devices {

// Keeps only what can still decide, and looks at each character a fixed number of times: a phone that never stops
// talking costs neither memory nor, as the talk grows, more time for every piece of it.
class Reply {
 public:
  void append(std::string_view arrived);

  // Whether "OK" or "error" stands anywhere in it. Kept on purpose: "ERROR" ends no answer, the "OK" in "NOKIA" does.
  bool ended() const { return saysOk_ || saysError_; }
  bool saysOk() const { return saysOk_; }

  // The first line with a letter in it that contains none of "AT", "ERROR" and "OK"; else the last line. Lines end
  // with CR LF; nothing, or blanks alone, behind the last CR LF are no line. Blanks around it may be left.
  std::string_view manufacturerLine() const;

 private:
  bool saysOk_ = false;
  bool saysError_ = false;
  bool named_ = false;  // whether line_ can name the maker; then no later line counts
  std::string line_;    // of the lines that have ended, the one that counts
  std::string rest_;    // the line that has not ended
};

}  // namespace pelvaro::devices
