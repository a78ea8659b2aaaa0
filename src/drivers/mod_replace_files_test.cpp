// Files in use: the call that has them replaced, and "WinInit.ini" byte for byte.
#include "drivers/mod_replace_files.h"

#include <gtest/gtest.h>

#include "platform/fake/fake_files.h"
#include "platform/fake/fake_system.h"
#include "platform/fake/headless_desktop.h"

namespace pelvaro::modReplaceFiles {
namespace {

using Lines = std::vector<std::string>;
constexpr const char* kDestination = "C:\\WINDOWS\\SYSTEM32\\drivers\\cable.sys";
constexpr const char* kSource = "C:\\Program Files\\corvanti\\common\\driver\\NK-A01\\cable.sys";
constexpr const char* kIni = "C:\\WINDOWS\\WinInit.ini";
const std::string kLine = "NUL=C:\\WINDOWS\\SYSTEM32\\drivers\\cable.sys~1\r\n";

struct Replacing : testing::Test {
  fake::Journal journal;
  fake::FakeFiles files{journal};
  fake::FakeEnvironment environment;
  fake::HeadlessDesktop desktop;

  Replacing() {
    files.contents[kDestination] = "old";
    files.contents[kSource] = "new";
    environment.variables = {{"os", "Windows_NT"}, {"windir", "C:\\WINDOWS"}};
  }
  void replace(bool endProgram = false) {
    ReplaceFileAtRestart({files, environment, desktop}, kDestination, kSource, endProgram);
  }
  // What stands in the file after a replacement on the older family; nothing when there is no file.
  std::optional<std::string> ini(const std::optional<std::string>& before) {
    environment.variables.erase("os");
    files.contents.erase(kIni);
    if (before) files.contents[kIni] = *before;
    replace();
    const auto file = files.contents.find(kIni);
    return file == files.contents.end() ? std::nullopt : std::optional(file->second);
  }
};

TEST_F(Replacing, OnTheNtFamilyTheShortSourceIsMovedOntoTheShortDestinationAtTheRestart) {
  replace();
  EXPECT_EQ(journal.take(),
            (Lines{std::string("GetShortPathName 255 ") + kDestination, std::string("GetShortPathName 255 ") + kSource,
                   std::string("MoveFileEx 5 ") + kSource + "~1 -> " + kDestination + "~1"}));
  EXPECT_EQ(files.contents.count(kIni), 0u);
}

TEST_F(Replacing, ANameThatCannotBeHadIsEmptyAndTheCallIsMade) {
  files.nameless = {kSource};
  replace();
  EXPECT_EQ(journal.take().back(), std::string("MoveFileEx 5  -> ") + kDestination + "~1");
}

TEST_F(Replacing, TheFamilyIsToldByTheExactValue) {
  for (const char* other : {"windows_nt", "Windows_NT ", "", "Windows"}) {
    environment.variables["os"] = other;
    files.contents.erase(kIni);
    replace();
    EXPECT_EQ(files.contents.count(kIni), 1u) << other;
  }
}

TEST_F(Replacing, AMissingIniIsMadeWithTwoLines) {
  EXPECT_EQ(ini(std::nullopt), "[Rename]\r\n" + kLine);
  for (const std::string& call : journal.take()) EXPECT_FALSE(call.starts_with("MoveFileEx")) << call;
}

TEST_F(Replacing, TheLineGoesToTheEndOfWhatIsThere) {
  const std::string nul(1, '\0');
  const struct {
    std::string before, kept;
  } table[] = {
      {"", "\r\n"},
      {"[Rename]\r\nNUL=C:\\A\r\n", "[Rename]\r\nNUL=C:\\A\r\n"},
      {"[Rename]\r\nNUL=C:\\A", "[Rename]\r\nNUL=C:\\A\r\n"},
      {"[Other]\r\nx=1\r\n", "[Other]\r\nx=1\r\n"},
      {"a\n", "a\n\r\n"},
      {"a\r", "a\r\r\n"},
      {"[Rename]\r\n" + nul + "behind\r\n", "[Rename]\r\n"},
      {nul + "behind", "\r\n"},
  };
  for (const auto& row : table) EXPECT_EQ(ini(row.before), row.kept + kLine) << row.before;
}

TEST_F(Replacing, AnIniThatFillsTheBufferLosesItsContent) {
  const std::string most(32767, 'a');
  EXPECT_EQ(ini(most), most + "\r\n" + kLine);
  const std::string ended = std::string(32765, 'a') + "\r\n";
  EXPECT_EQ(ini(ended), ended + kLine);
  for (const std::size_t size : {32768u, 100000u}) EXPECT_EQ(ini(std::string(size, 'a')), "\r\n" + kLine) << size;
  std::string cut(100000, 'a');
  cut[32767] = '\0';
  EXPECT_EQ(ini(cut), cut.substr(0, 32767) + "\r\n" + kLine) << "a NUL at the very end of the buffer";
  cut = std::string(100000, 'a');
  cut[32768] = '\0';
  EXPECT_EQ(ini(cut), "\r\n" + kLine) << "a NUL just behind it";
}

TEST_F(Replacing, AnIniThatCannotBeReadOrWrittenStaysAsItIs) {
  files.unreadable = {kIni};
  EXPECT_EQ(ini("[Rename]\r\n"), "[Rename]\r\n");
  files.unreadable.clear();
  files.readOnly = {kIni};
  EXPECT_EQ(ini("[Rename]\r\n"), "[Rename]\r\n");
  files.readOnly.clear();
  files.folders = {kIni};
  EXPECT_EQ(ini(std::nullopt), std::nullopt);
}

// Gives no file for anything that is asked for, as a system that cannot look does.
struct BlindFiles : fake::FakeFiles {
  using FakeFiles::FakeFiles;
  bool isFile(const std::string&) override { return false; }
};

TEST_F(Replacing, AnIniThatIsReadIsKeptThoughItWasNotFound) {
  BlindFiles blind(journal);
  blind.contents[kIni] = "[Rename]\r\nNUL=C:\\A\r\n";
  environment.variables.erase("os");
  ReplaceFileAtRestart({blind, environment, desktop}, kDestination, kSource, false);
  EXPECT_TRUE(blind.contents[kIni].starts_with("[Rename]\r\nNUL=C:\\A\r\nNUL="));
}

TEST_F(Replacing, ADestinationWithoutAShortNameIsAnEmptyOne) {
  files.nameless = {kDestination};
  EXPECT_EQ(ini(std::nullopt), "[Rename]\r\nNUL=\r\n");
}

TEST_F(Replacing, TheProgramEndsWhenThatIsAskedFor) {
  EXPECT_THROW(replace(true), ProgramEnded);
  EXPECT_TRUE(desktop.ended());
  EXPECT_EQ(journal.take().size(), 3u) << "everything else was done before";
}

// Gives the system's answer for a short name as it is planted.
struct NamingFiles : fake::FakeFiles {
  using FakeFiles::FakeFiles;
  std::string name;
  std::size_t result = 0, asked = 0;
  std::size_t shortPathName(const std::string&, char* buffer, std::size_t size) override {
    asked = size;
    for (std::size_t i = 0; i < 165; ++i) EXPECT_EQ(buffer[i], 0);
    std::copy_n(name.data(), std::min(name.size(), size), buffer);
    return result;
  }
};

TEST(ShortName, IsReadThroughABufferOf165ThoughMoreIsPromised) {
  fake::Journal journal;
  NamingFiles files(journal);
  files.name = "C:\\PROGRA~1";
  files.result = files.name.size();
  EXPECT_EQ(GetShortName(files, "x"), "C:\\PROGRA~1");
  EXPECT_EQ(files.asked, 255u);
  files.name = std::string(254, 'a');
  files.result = 254;
  EXPECT_EQ(GetShortName(files, "x"), std::string(165, 'a'));
  files.name = "";
  files.result = 300;  // so much room would be needed; nothing was written
  EXPECT_EQ(GetShortName(files, "x"), "");
  files.result = 0;
  EXPECT_EQ(GetShortName(files, "x"), "");
}

}  // namespace
}  // namespace pelvaro::modReplaceFiles
