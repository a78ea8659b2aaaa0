#include "base/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/runtime_error.h"

namespace pelvaro {
namespace {

template <typename Call>
void expectOverflow(Call call) {
  try {
    call();
    ADD_FAILURE() << "no overflow";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 6);
    EXPECT_EQ(error.description(), "Overflow");
  }
}

TEST(Arithmetic, OverflowsAtTheEndsOfItsRange) {
  EXPECT_EQ(add32(2147483646, 1), 2147483647);
  expectOverflow([] { add32(2147483647, 1); });
  EXPECT_EQ(subtract32(-2147483647, 1), std::numeric_limits<std::int32_t>::min());
  expectOverflow([] { subtract32(-2147483647, 2); });
  expectOverflow([] { subtract32(0, std::numeric_limits<std::int32_t>::min()); });
  EXPECT_EQ(multiply16(546, 60), 32760);
  expectOverflow([] { multiply16(547, 60); });
  EXPECT_EQ(multiply16(-546, 60), -32760);
  expectOverflow([] { multiply16(-547, 60); });
}

TEST(Conversion, RoundsHalvesToTheEvenNeighbour) {
  const struct {
    double value;
    int expected;
  } table[] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {0.51, 1}, {7.4, 7}, {32767.4, 32767}};
  for (const auto& row : table) {
    EXPECT_EQ(toInt16(row.value), row.expected) << row.value;
    EXPECT_EQ(toInt32(row.value), row.expected) << row.value;
  }
}

TEST(Conversion, OverflowsWhenTheRoundedValueDoesNotFit) {
  EXPECT_EQ(toInt16(-32768.5), -32768);
  expectOverflow([] { toInt16(32767.5); });
  expectOverflow([] { toInt16(-32769); });
  expectOverflow([] { toInt16(std::numeric_limits<double>::infinity()); });
  expectOverflow([] { toInt16(std::nan("")); });
  expectOverflow([] { toInt32(2147483648.0); });
}

TEST(RoundedForText, SendsHalvesAwayFromZero) {
  EXPECT_EQ(roundedForText(0.5), 1);
  EXPECT_EQ(roundedForText(-0.5), -1);
  EXPECT_EQ(roundedForText(2.5), 3);
  EXPECT_EQ(roundedForText(0.4999), 0);
  EXPECT_EQ(roundedForText(-0.4999), 0);
}

TEST(LeadingNumber, ReadsWhatTheTextBeginsWith) {
  const struct {
    const char* text;
    double expected;
  } table[] = {
      {"90", 90},
      {"  90", 90},
      {"90 minutes", 90},
      {"12abc", 12},
      {"abc", 0},
      {"", 0},
      {"   ", 0},
      {"-5", -5},
      {"+7", 7},
      {"- 5", 0},
      {"1.5", 1.5},
      {".5", 0.5},
      {"5.", 5},
      {".", 0},
      {"-.", 0},
      {"1e3", 1000},
      {"1e", 1},
      {"1e+", 1},
      {"2e-1x", 0.2},
      {"1,5", 1},
      {"0x10", 0},
      {"1.2.3", 1.2},
      {"inf", 0},
      {"nan", 0},
      {"1e-400", 0},
      {"12\0"
       "34",
       12},
      {"\t90", 0},
  };
  for (const auto& row : table) EXPECT_DOUBLE_EQ(leadingNumber(row.text), row.expected) << row.text;
}

TEST(LeadingNumber, OfFourHundredDigitsIsTooLargeForEveryConversion) {
  const std::string digits(400, '9');
  EXPECT_TRUE(std::isinf(leadingNumber(digits)));
  expectOverflow([&] { toInt16(leadingNumber(digits)); });
  EXPECT_EQ(leadingNumber(std::string(400, '0') + "7"), 7);
}

TEST(ToByte, TakesWholeNumbersFromEndToEnd) {
  EXPECT_EQ(toByte("0"), 0);
  EXPECT_EQ(toByte("255"), 255);
  EXPECT_EQ(toByte(" 12 "), 12);
  EXPECT_EQ(toByte("007"), 7);
  EXPECT_EQ(toByte("1e2"), 100);
  EXPECT_EQ(toByte("254.5"), 254);
}

TEST(ToByte, RefusesWhatIsNoNumberOrDoesNotFit) {
  for (const char* text : {"", " ", "a", "12a", "1 2", "-", "0x10", "1,5", "\t1"}) {
    try {
      toByte(text);
      ADD_FAILURE() << text;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number(), 13) << text;
      EXPECT_EQ(error.description(), "Type mismatch");
    }
  }
  expectOverflow([] { toByte("256"); });
  expectOverflow([] { toByte("-1"); });
  expectOverflow([] { toByte("1e400"); });
}

TEST(ToInt16OfText, TakesWholeTextsThatFit) {
  EXPECT_EQ(toInt16("-1"), -1);
  EXPECT_EQ(toInt16(" 0.5 "), 0);
  EXPECT_EQ(toInt16("1.5"), 2);
  EXPECT_EQ(toInt16("32767"), 32767);
  EXPECT_EQ(toInt16("-32768"), -32768);
  for (const char* text : {"", "1x", "--1"}) EXPECT_THROW(toInt16(text), RuntimeError) << text;
  expectOverflow([] { toInt16("32768"); });
  expectOverflow([] { toInt16("32767.5"); });
}

TEST(Grouped, FollowsTheLocalesGroups) {
  const struct {
    std::int32_t value;
    const char* separator;
    const char* groups;
    const char* expected;
  } table[] = {
      {0, ",", "3;0", "0"},
      {999, ",", "3;0", "999"},
      {1000, ",", "3;0", "1,000"},
      {4194303, ",", "3;0", "4,194,303"},
      {-4194303, ",", "3;0", "-4,194,303"},
      {-999, ",", "3;0", "-999"},
      {2147483647, ".", "3;0", "2.147.483.647"},
      {std::numeric_limits<std::int32_t>::min(), "'", "3;0", "-2'147'483'648"},
      {12345678, ",", "3;2;0", "1,23,45,678"},
      {12345678, ",", "3", "12345,678"},
      {12345678, ",", "0", "12345678"},
      {12345678, ",", "", "12345678"},
      {12345678, ",", "4;0", "1234,5678"},
      {12345678, ",", "x;y", "12345678"},
      {12345678, "", "3;0", "12345678"},
  };
  for (const auto& row : table) {
    EXPECT_EQ(grouped(row.value, {row.separator, row.groups}), row.expected) << row.value << " " << row.groups;
  }
}

TEST(DurationText, HasTwoDigitsEach) {
  EXPECT_EQ(durationText(0), "00:00:00");
  EXPECT_EQ(durationText(5400), "01:30:00");
  EXPECT_EQ(durationText(32760), "09:06:00");
  EXPECT_EQ(durationText(86399), "23:59:59");
  EXPECT_EQ(durationText(61), "00:01:01");
}

}  // namespace
}  // namespace pelvaro
