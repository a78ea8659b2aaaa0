// What the measuring programs share: a figure is a row of the table that bench/run.sh prints, with its reference of the
// same run, its limit and whether it keeps it; one that does not makes the program end with 1.
#pragma once

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

namespace pelvaro {

#ifdef __MINGW_PRINTF_FORMAT
#define PELVARO_PRINTF __MINGW_PRINTF_FORMAT
#else
#define PELVARO_PRINTF printf
#endif

// As printf writes it: a figure with its unit.
__attribute__((format(PELVARO_PRINTF, 1, 2))) inline std::string text(const char* format, ...) {
  char buffer[256];
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(buffer, sizeof buffer, format, arguments);
  va_end(arguments);
  return buffer;
}

// "" for what a figure does not have.
struct Figure {
  std::string what;
  std::string ours;
  std::string reference;
  std::string ratio;
  std::string limit;
};

inline double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

class Limits {
 public:
  // Prints the row. `kept` is whether its figure keeps its limit.
  void judge(bool kept, const Figure& figure) {
    std::printf("%s | %s | %s | %s | %s | %s\n", figure.what.c_str(), figure.ours.c_str(), figure.reference.c_str(),
                figure.ratio.c_str(), figure.limit.c_str(), kept ? "kept" : "MISSED");
    if (!kept) missed_ = true;
  }
  // Judges the ratio of two figures that stand in the row already.
  void judgeRatio(double ratio, double most, Figure figure) {
    figure.ratio = text("%.2f", ratio);
    figure.limit = text("ratio at most %.2f", most);
    judge(ratio <= most, figure);
  }
  int exitCode() const { return missed_ ? 1 : 0; }

 private:
  bool missed_ = false;
};

}  // namespace pelvaro
