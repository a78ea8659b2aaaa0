// What the measuring programs share: a figure is shown with its limit and whether it keeps it; one that does not makes
// the program end with 1.
#pragma once

#include <cstdarg>
#include <cstdio>

namespace pelvaro {

#ifdef __MINGW_PRINTF_FORMAT
#define PELVARO_PRINTF __MINGW_PRINTF_FORMAT
#else
#define PELVARO_PRINTF printf
#endif

class Limits {
 public:
  // Shows a line as printf does. `kept` is whether its figure keeps its limit.
  __attribute__((format(PELVARO_PRINTF, 3, 4))) void judge(bool kept, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
    std::puts(kept ? ": kept" : ": MISSED");
    if (!kept) missed_ = true;
  }
  int exitCode() const { return missed_ ? 1 : 0; }

 private:
  bool missed_ = false;
};

}  // namespace pelvaro
