// Where the practice line and the practice packages keep their files, and the lock around the phonebook.
#pragma once

#include <windows.h>

#include <cstdio>
#include <string>

namespace pelvaro::line {

inline std::string practiceFolder() {
  char folder[MAX_PATH];
  const DWORD length = ::GetEnvironmentVariableA("PELVARO_PRACTICE", folder, sizeof folder);
  return length > 0 && length < sizeof folder ? std::string(folder, length) : "C:\\practice";
}

// Adds a line to a file.
inline void append(const std::string& path, const std::string& line) {
  if (std::FILE* file = std::fopen(path.c_str(), "ab")) {
    std::fprintf(file, "%s\r\n", line.c_str());
    std::fclose(file);
  }
}

// Shared by all programs that use the phonebook's file.
inline HANDLE phonebookMutex() { return ::CreateMutexA(nullptr, FALSE, "PelvaroPracticePhonebook"); }

// Keeps other programs from the phonebook's file.
struct FileLock {
  explicit FileLock(HANDLE lockedMutex) : mutex(lockedMutex) {
    constexpr DWORD kForFile = 5000;  // milliseconds that another program's use of the file is waited for
    const DWORD result = ::WaitForSingleObject(mutex, kForFile);
    held = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;  // abandoned: its program was killed
  }
  ~FileLock() {
    if (held) ::ReleaseMutex(mutex);
  }
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  HANDLE mutex;
  bool held = false;
};

}  // namespace pelvaro::line
