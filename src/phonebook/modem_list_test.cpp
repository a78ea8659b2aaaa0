#include "phonebook/modem_list.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "platform/fake/fake_dial_service.h"
#include "platform/fake/fake_dialogs.h"

namespace pelvaro {
namespace {

using fake::Lines;
using namespace std::string_literals;

struct Device {
  std::string type;
  std::string name;
};

// Records of 152 bytes: type at 4 (17 bytes), name at 21 (129 bytes).
std::vector<std::uint8_t> deviceRecords(const std::vector<Device>& devices) {
  std::vector<std::uint8_t> bytes(devices.size() * 152);
  for (std::size_t i = 0; i < devices.size(); ++i) {
    std::copy(devices[i].type.begin(), devices[i].type.end(), bytes.begin() + static_cast<std::ptrdiff_t>(152 * i + 4));
    std::copy(devices[i].name.begin(), devices[i].name.end(),
              bytes.begin() + static_cast<std::ptrdiff_t>(152 * i + 21));
  }
  return bytes;
}

struct FillModemListTest : testing::Test, DeviceFilter {
  fake::Journal journal;
  fake::FakeDialService ras{journal};
  fake::FakeDialogs dialogs{journal};
  std::vector<std::string> listed;
  bool check = false;                                       // the editor's check box
  std::function<bool(const std::string& name)> onValidate;  // accepts every name when there is none

  bool wanted() override {
    journal.add("wanted");
    return check;
  }
  bool validateDevice(const std::string& name) override {
    journal.add("validate " + name);
    return onValidate ? onValidate(name) : true;
  }

  // The service lists these; the bytes of the second call are left in `given` as the program passed them.
  void plant(const std::vector<Device>& devices) {
    records = deviceRecords(devices);
    bytesNamed = static_cast<std::uint32_t>(records.size());
    devicesNamed = static_cast<std::uint32_t>(devices.size());
  }
  void fill() {
    listed.clear();
    ras.onEnumDevices = [this](void* buffer, std::uint32_t* size, std::uint32_t* count) -> std::uint32_t {
      if (!buffer) {
        *size = bytesNamed;
        *count = devicesNamed;
        return firstResult;
      }
      auto* bytes = static_cast<std::uint8_t*>(buffer);
      given.assign(bytes, bytes + std::max<std::size_t>(*size, 152));
      if (secondResult != 0) return secondResult;
      std::copy_n(records.begin(), std::min<std::size_t>(records.size(), *size), bytes);
      *count = countAfterwards;
      return 0;
    };
    Module1::FillModemList(ras, dialogs, *this, [this](const std::string& name) { listed.push_back(name); });
  }

  std::vector<std::uint8_t> records, given;
  std::uint32_t bytesNamed = 0, devicesNamed = 0, firstResult = 603, secondResult = 0, countAfterwards = 0;
};

TEST_F(FillModemListTest, SecondCallPassesOneVariableAsSizeAndCount) {
  plant({{"modem", "One"}, {"modem", "Two"}});
  fill();
  EXPECT_EQ(journal.take(), (Lines{"RasEnumDevices null 0", "RasEnumDevices buffer 304 same", "wanted", "wanted"}));
  EXPECT_EQ(listed, (Lines{"One", "Two"}));
}

TEST_F(FillModemListTest, CountOfTheFirstCallIsUsedWhateverTheSecondWrites) {
  plant({{"modem", "One"}, {"modem", "Two"}, {"modem", "Three"}});
  for (const std::uint32_t count : {0u, 1u, 3u, 99u}) {
    countAfterwards = count;
    fill();
    EXPECT_EQ(listed, (Lines{"One", "Two", "Three"})) << count;
  }
  devicesNamed = 2;
  countAfterwards = 3;
  fill();
  EXPECT_EQ(listed, (Lines{"One", "Two"}));
}

TEST_F(FillModemListTest, AServiceThatNamesNoCountHasNoDevices) {
  plant({{"modem", "Nokia"}});
  ras.onEnumDevices = [this](void* buffer, std::uint32_t* size, std::uint32_t*) -> std::uint32_t {
    *size = bytesNamed;
    if (!buffer) return firstResult;
    std::memcpy(buffer, records.data(), records.size());
    return 0;
  };
  Module1::FillModemList(ras, dialogs, *this, [this](const std::string& name) { listed.push_back(name); });
  EXPECT_EQ(listed, Lines{});
}

TEST_F(FillModemListTest, OnlyTheFirstRecordSaysItsSize) {
  plant({{"modem", "One"}, {"modem", "Two"}});
  fill();
  std::vector<std::uint8_t> expected(304);
  expected[0] = 152;
  EXPECT_EQ(given, expected);
}

TEST_F(FillModemListTest, ResultOfTheFirstCallDoesNotMatter) {
  plant({{"modem", "One"}});
  for (const std::uint32_t result : {0u, 603u, 632u, 87u}) {
    firstResult = result;
    fill();
    EXPECT_EQ(listed, (Lines{"One"})) << result;
  }
  EXPECT_EQ(journal.take().size(), 4u * 3u);
}

TEST_F(FillModemListTest, CountIsBoundByTheBytes) {
  plant({{"modem", "One"}, {"modem", "Two"}});
  devicesNamed = 1000;
  fill();
  EXPECT_EQ(listed, (Lines{"One", "Two"}));
  bytesNamed = 303;  // the second record is not whole
  fill();
  EXPECT_EQ(listed, (Lines{"One"}));
}

TEST_F(FillModemListTest, NoBytesStillMakeTheSecondCallWithOneRecord) {
  fill();
  EXPECT_EQ(journal.take(), (Lines{"RasEnumDevices null 0", "RasEnumDevices buffer 0 same"}));
  std::vector<std::uint8_t> expected(152);
  expected[0] = 152;
  EXPECT_EQ(given, expected);
  EXPECT_EQ(listed, Lines{});
}

TEST_F(FillModemListTest, DevicesWithoutBytesAreNotListed) {
  devicesNamed = 3;
  fill();
  EXPECT_EQ(journal.take(), (Lines{"RasEnumDevices null 0", "RasEnumDevices buffer 0 same"}));
  EXPECT_EQ(listed, Lines{});
}

TEST_F(FillModemListTest, AbsurdByteCountIsCut) {
  plant({{"modem", "One"}});
  bytesNamed = 0xFFFFFFFF;
  fill();
  EXPECT_EQ(journal.take()[1], "RasEnumDevices buffer 1048576 same");
  EXPECT_EQ(listed, (Lines{"One"}));
}

TEST_F(FillModemListTest, FailureShowsTheBareNumberAndListsNothing) {
  plant({{"modem", "One"}});
  secondResult = 632;
  fill();
  EXPECT_EQ(journal.take(), (Lines{"RasEnumDevices null 0", "RasEnumDevices buffer 152 same", "MessageBox 0 632"}));
  EXPECT_EQ(listed, Lines{});
}

TEST_F(FillModemListTest, WithoutAModemNothingIsListedOrShown) {
  plant({{"isdn", "One"}, {"vpn", "modem"}, {"", "Two"}, {"mode", "m"}, {"m odem", "Three"}});
  check = true;
  fill();
  EXPECT_EQ(journal.take(), (Lines{"RasEnumDevices null 0", "RasEnumDevices buffer 760 same"}));
  EXPECT_EQ(listed, Lines{});
}

TEST_F(FillModemListTest, TypeContainsModemInAnyCase) {
  plant({{"modem", "1"},
         {"MODEM", "2"},
         {"MoDeM", "3"},
         {"Modem (x)", "4"},
         {" a modem ", "5"},
         {"faxmodem", "6"},
         {"pad", "7"}});
  fill();
  EXPECT_EQ(listed, (Lines{"1", "2", "3", "4", "5", "6"}));
}

TEST_F(FillModemListTest, TypeOf17BytesEndsBeforeTheName) {
  plant({{"abcdefghijklMODEM", "Whole"},
         {"abcdefghijklmmode", "m is of the name"},
         {"modem\0xxxxxxxxxxx"s, "Cut"},
         {"isdn\0modem"s, "Behind the NUL"}});
  fill();
  EXPECT_EQ(listed, (Lines{"Whole", "Cut"}));
}

TEST_F(FillModemListTest, NameOf129BytesEndsBeforeTheNextRecord) {
  plant({{"modem", std::string(129, 'n')}, {"modem", "Two"}});
  records[150] = records[151] = 'x';  // the padding behind the name
  fill();
  EXPECT_EQ(listed, (Lines{std::string(129, 'n'), "Two"}));
}

TEST_F(FillModemListTest, NamesAreCutAtNulThenTrimmedOfBlanksOnly) {
  plant(
      {{"modem", "  Cable Modem  "}, {"modem", "\tTab\t "}, {"modem", "A \0 B"s}, {"modem", "\r\n"}, {"modem", "   "}});
  fill();
  EXPECT_EQ(listed, (Lines{"Cable Modem", "\tTab\t", "A", "\r\n", ""}));
}

TEST_F(FillModemListTest, UncheckedNothingIsValidated) {
  plant({{"modem", "One"}});
  onValidate = [](const std::string&) { return false; };
  fill();
  EXPECT_EQ(journal.take(), (Lines{"RasEnumDevices null 0", "RasEnumDevices buffer 152 same", "wanted"}));
  EXPECT_EQ(listed, (Lines{"One"}));
}

TEST_F(FillModemListTest, CheckedOnlyAcceptedNamesAreListed) {
  plant({{"modem", " One "}, {"isdn", "Two"}, {"modem", "Three"}});
  check = true;
  onValidate = [](const std::string& name) { return name == "Three"; };
  fill();
  EXPECT_EQ(journal.take(), (Lines{"RasEnumDevices null 0", "RasEnumDevices buffer 456 same", "wanted", "validate One",
                                   "wanted", "validate Three"}));
  EXPECT_EQ(listed, (Lines{"Three"}));
}

TEST_F(FillModemListTest, CheckBoxIsReadAnewForEveryDevice) {
  plant({{"modem", "One"}, {"modem", "Two"}, {"modem", "Three"}});
  check = true;
  onValidate = [this](const std::string&) {
    check = false;  // the user clicks it meanwhile
    return false;
  };
  fill();
  EXPECT_EQ(listed, (Lines{"Two", "Three"}));
}

}  // namespace
}  // namespace pelvaro
