// What the system tells: the time, how numbers are grouped, the network interfaces. Each against another of its calls.
#include <gtest/gtest.h>

#include <vector>

#include "base/bytes.h"
#include "platform/if_table_layout.h"
#include "platform/win32/clock.h"
#include "platform/win32/environment.h"
#include "platform/win32/interface_table.h"

namespace pelvaro::win32 {
namespace {

TEST(SystemClock, TellsTheLocalTimeOfDay) {
  const auto localSeconds = [] {
    SYSTEMTIME time{};
    ::GetLocalTime(&time);
    return time.wHour * 3600 + time.wMinute * 60 + time.wSecond;
  };
  SystemClock clock;
  const int before = localSeconds();
  const int told = clock.secondsOfDay();
  const int after = localSeconds();
  if (before <= after) {  // not over midnight
    EXPECT_GE(told, before);
    EXPECT_LE(told, after);
  }
}

// A setting of the user's locale for the time of a test.
struct LocaleSetting {
  LocaleSetting(LCTYPE type, const char* value) : type_(type) {
    ::GetLocaleInfoA(LOCALE_USER_DEFAULT, type_, before_, sizeof before_);
    ::SetLocaleInfoA(LOCALE_USER_DEFAULT, type_, value);
  }
  ~LocaleSetting() { ::SetLocaleInfoA(LOCALE_USER_DEFAULT, type_, before_); }
  LocaleSetting(const LocaleSetting&) = delete;
  LocaleSetting& operator=(const LocaleSetting&) = delete;
  LCTYPE type_;
  char before_[16] = "";
};

TEST(SystemEnvironment, GroupsNumbersAsTheUserHasSetItAtThatMoment) {
  SystemEnvironment environment;
  {
    const LocaleSetting separator(LOCALE_STHOUSAND, "'");
    const LocaleSetting groups(LOCALE_SGROUPING, "3;2;0");
    EXPECT_EQ(grouped(12345678, environment.numberStyle()), "1'23'45'678");
  }
  const LocaleSetting separator(LOCALE_STHOUSAND, ".");
  const LocaleSetting groups(LOCALE_SGROUPING, "3;0");
  EXPECT_EQ(grouped(-4194303, environment.numberStyle()), "-4.194.303");
}

TEST(SystemInterfaceTable, GivesTheSizeAndThenRowsOfWhichOneIsTheLoopback) {
  SystemInterfaceTable interfaces;
  std::uint32_t size = 0;
  EXPECT_EQ(interfaces.getIfTable(nullptr, &size, true), static_cast<std::uint32_t>(ERROR_INSUFFICIENT_BUFFER));
  ASSERT_GE(size, if_table::kFirstRow + if_table::kRowSize);
  std::vector<std::uint8_t> table(size);
  ASSERT_EQ(interfaces.getIfTable(table.data(), &size, true), 0u);
  const std::uint32_t rows = get32(table, if_table::kCount);
  ASSERT_LE(if_table::kFirstRow + rows * if_table::kRowSize, table.size());
  bool loopback = false;
  for (std::uint32_t i = 0; i < rows; ++i) {
    const std::size_t row = if_table::kFirstRow + i * if_table::kRowSize;
    loopback = loopback || get32(table, row + if_table::kType) == if_table::kLoopback;
  }
  EXPECT_TRUE(loopback);
}

}  // namespace
}  // namespace pelvaro::win32
