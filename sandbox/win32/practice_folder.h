// Where the practice line and the practice packages keep their files, and the lock around the phonebook.
#pragma once

#include <windows.h>

#include <string>

namespace pelvaro::line {

inline std::string practiceFolder() {
  char folder[MAX_PATH];
  const DWORD length = ::GetEnvironmentVariableA("PELVARO_PRACTICE", folder, sizeof folder);
  return length > 0 && length < sizeof folder ? std::string(folder, length) : "C:\\practice";
}

// Adds a line to a file, which other programs may do at the same moment: the system itself looks for its end.
inline void append(const std::string& path, const std::string& line) {
  const HANDLE file = ::CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  const std::string ended = line + "\r\n";
  DWORD written = 0;
  ::WriteFile(file, ended.data(), static_cast<DWORD>(ended.size()), &written, nullptr);
  ::CloseHandle(file);
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
