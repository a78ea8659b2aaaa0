#include "phonebook/ras_error_text.h"

#include <gtest/gtest.h>

#include "platform/fake/fake_dial_service.h"

namespace pelvaro {
namespace {

using fake::Lines;
using Module1::RasErrorText;
using namespace std::string_literals;

struct RasErrorTextTest : testing::Test {
  fake::Journal journal;
  fake::FakeDialService ras{journal};
};

TEST_F(RasErrorTextTest, CodesBelow601AsSignedNumbersAreTheSystemsOwn) {
  const struct {
    std::int32_t code;
    const char* call;
  } table[] = {
      {0, "FormatMessage 4096 0 0 512"},
      {5, "FormatMessage 4096 5 0 512"},
      {599, "FormatMessage 4096 599 0 512"},
      {600, "FormatMessage 4096 600 0 512"},
      {601, "RasGetErrorString 601 512"},
      {691, "RasGetErrorString 691 512"},
      {1223, "RasGetErrorString 1223 512"},
      {0x7FFFFFFF, "RasGetErrorString 2147483647 512"},
      {-1, "FormatMessage 4096 4294967295 0 512"},
      {static_cast<std::int32_t>(0xFFFFFFFF), "FormatMessage 4096 4294967295 0 512"},
      {static_cast<std::int32_t>(0x80070005), "FormatMessage 4096 2147942405 0 512"},
      {static_cast<std::int32_t>(0x80000000), "FormatMessage 4096 2147483648 0 512"},
  };
  for (const auto& row : table) {
    RasErrorText(ras, row.code);
    EXPECT_EQ(journal.take(), (Lines{row.call})) << row.code;
  }
}

TEST_F(RasErrorTextTest, LineEndBehindTheTextStays) {
  ras.messageText = "Access is denied.\r\n";
  EXPECT_EQ(RasErrorText(ras, 5), "Access is denied.\r\n");
}

TEST_F(RasErrorTextTest, BlanksAroundTheTextStay) {
  ras.messageText = " The port was not found. ";
  EXPECT_EQ(RasErrorText(ras, 627), " The port was not found. ");
}

TEST_F(RasErrorTextTest, NoMessageGivesAnEmptyText) {
  EXPECT_EQ(RasErrorText(ras, 600), "");
  EXPECT_EQ(RasErrorText(ras, 601), "");
}

TEST_F(RasErrorTextTest, EndsAtTheFirstNul) {
  ras.messageText = "first\0second"s;
  EXPECT_EQ(RasErrorText(ras, 5), "first");
  EXPECT_EQ(RasErrorText(ras, 691), "first");
  ras.messageText = "\0second"s;
  EXPECT_EQ(RasErrorText(ras, 691), "");
}

TEST_F(RasErrorTextTest, TextOf512BytesWithoutNulIsGivenWhole) {
  ras.messageText = std::string(512, 'x');
  EXPECT_EQ(RasErrorText(ras, 5), std::string(512, 'x'));
  EXPECT_EQ(RasErrorText(ras, 691), std::string(512, 'x'));
}

TEST_F(RasErrorTextTest, BytesOver127AreKept) {
  ras.messageText = "Ger\xE4t \xFF";
  EXPECT_EQ(RasErrorText(ras, 691), "Ger\xE4t \xFF");
}

}  // namespace
}  // namespace pelvaro
