#include "base/runtime_error.h"

namespace pelvaro {

namespace {
constexpr int kInternalError = 51;
}  // namespace

std::string RuntimeError::report() const {
  return "Run-time error '" + std::to_string(number_) + "':\n\n" + description_;
}

RuntimeError internalError(const std::string& what) { return {kInternalError, "Internal error: " + what}; }

}  // namespace pelvaro
