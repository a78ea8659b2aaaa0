// What the program keeps: files replaced whole, the user's settings; and the random numbers that it keeps them with.
#include <gtest/gtest.h>

#include <vector>

#include "platform/environment.h"
#include "platform/win32/files.h"
#include "platform/win32/random_source.h"
#include "platform/win32/settings.h"
#include "platform/win32/windows_header.h"

namespace pelvaro::win32 {
namespace {

using namespace std::string_literals;

// A folder of a test's own.
struct SystemFilesTest : testing::Test {
  SystemFilesTest() {
    char temporary[MAX_PATH];
    ::GetTempPathA(sizeof temporary, temporary);
    folder = temporary + "pelvaro_store_"s + std::to_string(::GetCurrentProcessId());
    ::CreateDirectoryA(folder.c_str(), nullptr);
    path = folder + "\\list.dat";
  }
  ~SystemFilesTest() override {
    for (const auto& name : names()) {
      const std::string whole = folder + "\\" + name;
      ::SetFileAttributesA(whole.c_str(), FILE_ATTRIBUTE_NORMAL);
      ::DeleteFileA(whole.c_str());
      ::RemoveDirectoryA(whole.c_str());
    }
    ::RemoveDirectoryA(folder.c_str());
  }
  SystemFilesTest(const SystemFilesTest&) = delete;
  SystemFilesTest& operator=(const SystemFilesTest&) = delete;

  std::vector<std::string> names() const {
    std::vector<std::string> result;
    WIN32_FIND_DATAA found;
    const HANDLE search = ::FindFirstFileA((folder + "\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return result;
    do {
      if (found.cFileName[0] != '.') result.emplace_back(found.cFileName);
    } while (::FindNextFileA(search, &found));
    ::FindClose(search);
    return result;
  }
  using Names = std::vector<std::string>;

  SystemFiles files;
  std::string folder, path;
};

TEST_F(SystemFilesTest, ComeBackWithEveryByteAsTheyWereWritten) {
  std::string bytes;
  for (int i = 0; i < 300'000; ++i) bytes += static_cast<char>(i * 7 + i / 256);
  for (const auto& written : {"a\r\nb\n\x1A\0c"s, bytes, ""s}) {
    EXPECT_TRUE(files.replaceWhole(path, written));
    EXPECT_EQ(files.readWhole(path), written);
  }
  EXPECT_EQ(names(), Names{"list.dat"}) << "nothing is left beside it";
}

TEST_F(SystemFilesTest, AreNoFoldersAndNotNothing) {
  EXPECT_FALSE(files.isFile(path));
  EXPECT_FALSE(files.readWhole(path));
  EXPECT_TRUE(files.replaceWhole(path, "x"));
  EXPECT_TRUE(files.isFile(path));
  for (const auto& other : {folder, path + "\\x", ""s, folder + "\\" + std::string(300, 'x'), "no:\\such|name"s}) {
    EXPECT_FALSE(files.isFile(other)) << other;
    EXPECT_FALSE(files.readWhole(other)) << other;
    EXPECT_FALSE(files.replaceWhole(other, "x")) << other;
  }
  EXPECT_EQ(names(), Names{"list.dat"});
}

TEST_F(SystemFilesTest, ThatAreReadOnlyAreNotReplaced) {
  ASSERT_TRUE(files.replaceWhole(path, "old"));
  ::SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(files.replaceWhole(path, "new"));
  EXPECT_EQ(files.readWhole(path), "old");
  EXPECT_EQ(names(), Names{"list.dat"});
}

TEST_F(SystemFilesTest, ThatAnotherProgramHoldsAreNotReplaced) {
  ASSERT_TRUE(files.replaceWhole(path, "old"));
  const HANDLE held = ::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_FALSE(files.readWhole(path));
  EXPECT_FALSE(files.replaceWhole(path, "new"));
  ::CloseHandle(held);
  EXPECT_EQ(files.readWhole(path), "old");
  EXPECT_EQ(names(), Names{"list.dat"});
}

TEST_F(SystemFilesTest, AreReplacedAlthoughAnEarlierTryWasCutOff) {
  ASSERT_TRUE(files.replaceWhole(path + ".new", "half of it, and longer than the whole"));
  EXPECT_TRUE(files.replaceWhole(path, "whole"));
  EXPECT_EQ(files.readWhole(path), "whole");
  EXPECT_EQ(names(), Names{"list.dat"});
}

TEST_F(SystemFilesTest, AreNotReplacedWhenAFolderIsInTheWayOfTheNewOne) {
  ASSERT_TRUE(files.replaceWhole(path, "old"));
  ASSERT_TRUE(::CreateDirectoryA((path + ".new").c_str(), nullptr));
  EXPECT_FALSE(files.replaceWhole(path, "new"));
  EXPECT_EQ(files.readWhole(path), "old");
}

TEST_F(SystemFilesTest, AreReadUpToTheBoundOnly) {
  const HANDLE file = ::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE);
  ::SetFilePointer(file, static_cast<LONG>(kLargestFile), nullptr, FILE_BEGIN);
  ::SetEndOfFile(file);
  const auto atBound = files.readWhole(path);
  ASSERT_TRUE(atBound);
  EXPECT_EQ(atBound->size(), kLargestFile);
  ::SetFilePointer(file, static_cast<LONG>(kLargestFile) + 1, nullptr, FILE_BEGIN);
  ::SetEndOfFile(file);
  EXPECT_FALSE(files.readWhole(path));
  ::CloseHandle(file);
}

TEST_F(SystemFilesTest, AreNoDevices) { EXPECT_FALSE(files.readWhole("NUL")); }

constexpr const char* kSection = "Setting of a test";

std::string keyName() { return std::string("Software\\") + kApplicationTitle + "\\" + kSection; }

struct SystemSettingsTest : testing::Test {
  ~SystemSettingsTest() override { ::RegDeleteKeyA(HKEY_CURRENT_USER, keyName().c_str()); }

  // Puts a value of any type and bytes behind the program's back.
  static void plant(DWORD type, const std::string& bytes) {
    HKEY key = nullptr;
    ::RegCreateKeyExA(HKEY_CURRENT_USER, keyName().c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr);
    ::RegSetValueExA(key, "path", 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                     static_cast<DWORD>(bytes.size()));
    ::RegCloseKey(key);
  }
  SystemSettings settings;
};

TEST_F(SystemSettingsTest, AreEmptyWhenAbsentAndComeBackWhenSaved) {
  EXPECT_EQ(settings.get(kSection, "path"), "");
  EXPECT_TRUE(settings.save(kSection, "path", "C:\\Pelvaro\\Default.DAT"));
  EXPECT_EQ(settings.get(kSection, "path"), "C:\\Pelvaro\\Default.DAT");
  EXPECT_EQ(settings.get(kSection, "other"), "");
  EXPECT_TRUE(settings.save(kSection, "path", ""));
  EXPECT_EQ(settings.get(kSection, "path"), "");
}

TEST_F(SystemSettingsTest, AreOneStoreWhateverTheCase) {
  EXPECT_TRUE(settings.save("setting OF a test", "PATH", "x"));
  EXPECT_EQ(settings.get(kSection, "path"), "x");
}

TEST_F(SystemSettingsTest, KeepTextsOverTheBoundFromTheProgram) {
  const std::string longest(kLongestSetting, 'x');
  EXPECT_TRUE(settings.save(kSection, "path", longest));
  EXPECT_EQ(settings.get(kSection, "path"), longest);
  EXPECT_TRUE(settings.save(kSection, "path", longest + "x"));
  EXPECT_EQ(settings.get(kSection, "path"), "");
}

TEST_F(SystemSettingsTest, AreTextsOnlyAndEndAtTheFirstNul) {
  plant(REG_SZ, "no end");
  EXPECT_EQ(settings.get(kSection, "path"), "no end");
  plant(REG_SZ, "a\0b\0"s);
  EXPECT_EQ(settings.get(kSection, "path"), "a");
  plant(REG_SZ, "");
  EXPECT_EQ(settings.get(kSection, "path"), "");
  plant(REG_DWORD, "abcd");
  EXPECT_EQ(settings.get(kSection, "path"), "");
  plant(REG_BINARY, "abc");
  EXPECT_EQ(settings.get(kSection, "path"), "");
}

TEST(SystemRandom, DrawsFrom0ToBelow1AndOtherNumbersEachTime) {
  SystemRandom random;
  bool low = false, high = false;
  for (int i = 0; i < 1000; ++i) {
    const double value = random.next();
    ASSERT_GE(value, 0);
    ASSERT_LT(value, 1);
    low = low || value < 0.1;
    high = high || value > 0.9;
  }
  EXPECT_TRUE(low && high);
  const double before = SystemRandom().next();
  bool differs = false;
  for (int i = 0; i < 20 && !differs; ++i) {
    ::Sleep(1);
    differs = SystemRandom().next() != before;
  }
  EXPECT_TRUE(differs);
}

}  // namespace
}  // namespace pelvaro::win32
