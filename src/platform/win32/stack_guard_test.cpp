// What stands between a function's buffers and its return address: random at every start, with a byte that ends texts,
// and the end of a program that overwrites it.
#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "platform/win32/windows_header.h"

extern "C" std::uintptr_t __stack_chk_guard;

namespace {

// Runs this program again with a word, and gives its exit code.
DWORD exitCodeOf(const char* word) {
  char command[MAX_PATH + 32] = "\"";
  ::GetModuleFileNameA(nullptr, command + 1, MAX_PATH);
  std::strcat(command, "\" ");
  std::strcat(command, word);
  STARTUPINFOA info{};
  info.cb = sizeof info;
  PROCESS_INFORMATION process{};
  if (!::CreateProcessA(nullptr, command, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &info, &process)) return 0;
  ::WaitForSingleObject(process.hProcess, 30'000);
  DWORD code = 0;
  ::GetExitCodeProcess(process.hProcess, &code);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return code;
}

// Writes two words past its buffer: over the guard, not as far as the return address and what this needs itself.
__attribute__((noinline)) void smash(std::size_t length) {
  char buffer[16];
  volatile char* out = buffer;
  for (std::size_t i = 0; i < length; ++i) out[i] = 'x';
}

TEST(StackGuard, EndsATextAndIsNotTheFixedWord) {
  EXPECT_EQ(__stack_chk_guard & 0xFF, 0u);
  EXPECT_NE(__stack_chk_guard, 0xFF0A0D00u);
}

TEST(StackGuard, DiffersFromStartToStart) {
  std::set<DWORD> seen;
  for (int i = 0; i < 3; ++i) seen.insert(exitCodeOf("guard"));
  EXPECT_EQ(seen.size(), 3u);
}

TEST(StackGuard, EndsAProgramThatOverwritesItsStack) { EXPECT_EQ(exitCodeOf("smash"), 0xC0000409u); }

}  // namespace

int main(int count, char** arguments) {
  const char* word = count == 2 ? arguments[1] : "";
  if (std::strcmp(word, "guard") == 0) return static_cast<int>(__stack_chk_guard >> 8);
  if (std::strcmp(word, "smash") == 0) return smash(24), 1;
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
