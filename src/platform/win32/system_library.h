// A DLL of the system, loaded from the system folder only and only when it is needed. Functions are looked up once; the
// first use of one that is missing says so in a message box, once.
#pragma once

#include <map>
#include <string>

#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {

class SystemLibrary {
 public:
  // `file` is the bare name, "rasapi32.dll".
  explicit SystemLibrary(const char* file) : file_(file) {}
  SystemLibrary(const SystemLibrary&) = delete;
  SystemLibrary& operator=(const SystemLibrary&) = delete;

  // The address of a function, null when it or the library is missing.
  FARPROC find(const char* name);

 private:
  void report(const std::string& what);

  const char* file_;
  HMODULE module_ = nullptr;
  bool tried_ = false;
};

// One function of a library, with its type; looked up at its first call.
template <typename Function>
class SystemFunction;

template <typename Result, typename... Arguments>
class SystemFunction<Result(WINAPI*)(Arguments...)> {
 public:
  using Pointer = Result(WINAPI*)(Arguments...);
  SystemFunction(SystemLibrary& library, const char* name) : library_(library), name_(name) {}

  // Calls it; gives `missing` when it is not there.
  Result call(Result missing, Arguments... arguments) {
    if (!looked_) {
      looked_ = true;
      pointer_ = reinterpret_cast<Pointer>(reinterpret_cast<void*>(library_.find(name_)));
    }
    return pointer_ ? pointer_(arguments...) : missing;
  }

 private:
  SystemLibrary& library_;
  const char* name_;
  Pointer pointer_ = nullptr;
  bool looked_ = false;
};

}  // namespace pelvaro::win32
