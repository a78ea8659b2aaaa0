#include "platform/win32/files.h"

#include <algorithm>

#include "base/text.h"
#include "platform/win32/system_library.h"
#include "platform/win32/windows_header.h"
// Behind windows.h.
#include <shellapi.h>

namespace pelvaro::win32 {

namespace {

// An open file, closed when it goes out of scope.
class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  ~FileHandle() { close(); }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  bool open() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }
  bool close() {
    const HANDLE handle = handle_;
    handle_ = INVALID_HANDLE_VALUE;
    return handle != INVALID_HANDLE_VALUE && ::CloseHandle(handle);
  }

 private:
  HANDLE handle_;
};

constexpr DWORD kBlock = 1 << 16;
constexpr std::size_t kMostNames = 10000;  // of a folder; a driver has some ten files

bool writeNew(const std::string& path, std::string_view bytes) {
  FileHandle file(
      ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.open()) return false;
  while (!bytes.empty()) {
    const auto size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), kBlock));
    DWORD written = 0;
    if (!::WriteFile(file.get(), bytes.data(), size, &written, nullptr) || written == 0) return false;
    bytes.remove_prefix(written);
  }
  const bool flushed = ::FlushFileBuffers(file.get());
  return file.close() && flushed;
}

}  // namespace

bool SystemFiles::isFile(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::optional<std::string> SystemFiles::readWhole(const std::string& path) {
  const FileHandle file(::CreateFileA(path.c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  // A console or a serial port has no end.
  if (!file.open() || ::GetFileType(file.get()) != FILE_TYPE_DISK) return std::nullopt;
  LARGE_INTEGER size{};
  if (!::GetFileSizeEx(file.get(), &size) || size.QuadPart > static_cast<LONGLONG>(kLargestFile)) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
  std::size_t have = 0;
  while (have < bytes.size()) {
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(bytes.size() - have);
    if (!::ReadFile(file.get(), bytes.data() + have, wanted, &count, nullptr)) return std::nullopt;
    if (count == 0) break;  // it has been cut meanwhile
    have += count;
  }
  bytes.resize(have);
  return bytes;
}

bool SystemFiles::replaceWhole(const std::string& path, std::string_view bytes) {
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  // Asked first, because not every system refuses to move a file over a read-only one.
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY))) {
    return false;
  }
  const std::string fresh = path + ".new";
  if (::GetFileAttributesA(fresh.c_str()) != INVALID_FILE_ATTRIBUTES && !isFile(fresh)) return false;
  if (writeNew(fresh, bytes) &&
      ::MoveFileExA(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    return true;
  }
  ::DeleteFileA(fresh.c_str());
  return false;
}

bool SystemFiles::isFolder(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool SystemFiles::makeFolder(const std::string& path) { return ::CreateDirectoryA(path.c_str(), nullptr); }

std::vector<std::string> SystemFiles::namesIn(const std::string& folder, const std::string& ending) {
  std::vector<std::string> names;
  WIN32_FIND_DATAA found{};
  const HANDLE search = ::FindFirstFileA((folder + "\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return names;
  constexpr DWORD kNotListed = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  do {
    // The ending itself is looked at: the platform's own pattern takes short names into account.
    const std::string name = found.cFileName;
    if (!(found.dwFileAttributes & kNotListed) && lowered(name).ends_with(ending)) names.push_back(name);
  } while (names.size() < kMostNames && ::FindNextFileA(search, &found));
  ::FindClose(search);
  std::sort(names.begin(), names.end(),
            [](const std::string& a, const std::string& b) { return ::lstrcmpiA(a.c_str(), b.c_str()) < 0; });
  return names;
}

void SystemFiles::shellCopy(const std::string& from, const std::string& to, std::uint32_t flags) {
  // Loaded when it is needed: most days nobody installs a driver.
  static SystemLibrary shell("shell32.dll");
  using Operation = int(WINAPI*)(LPSHFILEOPSTRUCTA);
  static SystemFunction<Operation> operation(shell, "SHFileOperationA");
  const std::string fromList = from + '\0', toList = to + '\0';  // lists of one path: two NULs end them
  SHFILEOPSTRUCTA record{};
  record.wFunc = FO_COPY;
  record.pFrom = fromList.c_str();
  record.pTo = toList.c_str();
  record.fFlags = static_cast<FILEOP_FLAGS>(flags);
  operation.call(0, &record);
  if (loop_ && loop_->ended()) throw ProgramEnded{};
}

std::size_t SystemFiles::shortPathName(const std::string& path, char* buffer, std::size_t size) {
  return ::GetShortPathNameA(path.c_str(), buffer, static_cast<DWORD>(size));
}

bool SystemFiles::moveFileEx(const std::string& from, const std::string& to, std::uint32_t flags) {
  return ::MoveFileExA(from.c_str(), to.c_str(), flags);
}

}  // namespace pelvaro::win32
