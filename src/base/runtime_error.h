// The run-time error that ends the program when nobody handles it: an overflow, a failed conversion. Thrown by the
// number and text rules, caught where errors are ignored on purpose and at the top, which reports it.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace pelvaro {

class RuntimeError : public std::exception {
 public:
  RuntimeError(int number, std::string description) : number_(number), description_(std::move(description)) {}

  int number() const { return number_; }
  const std::string& description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  // The text of the report: "Run-time error '6':", a blank line, "Overflow".
  std::string report() const;

 private:
  int number_;
  std::string description_;
};

// An error that the program itself did not name (an exception of the library), reported in the same form.
RuntimeError internalError(const std::string& what);

}  // namespace pelvaro
