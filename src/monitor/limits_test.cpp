#include "monitor/limits.h"

#include <gtest/gtest.h>

#include <bit>

namespace pelvaro::monitor {
namespace {

TEST(NearThreshold, RoundsHalvesToTheEvenNeighbour) {
  const struct {
    std::int32_t limit, expected;
  } table[] = {{0, 0},   {1, 1},       {5, 4},   {15, 10},  {25, 18},
               {35, 24}, {45, 31},     {60, 42}, {100, 70}, {32767, 22937},
               {-5, -4}, {-300, -210}, {75, 52}, {3, 2},    {2147483647, 1503238553}};
  for (const auto& row : table) EXPECT_EQ(nearThreshold(row.limit), row.expected) << row.limit;
}

// The double 0.7 is 0.4 / 2^53 below seven tenths. A product whose exact value is a half therefore lies `limit` times
// that below it, and is the half itself if that is at most half a unit in its last place; worked out here in whole
// numbers.
TEST(NearThreshold, IsRightForEveryLimitThatCanBeSet) {
  int halves = 0;
  for (std::uint32_t limit = 1; limit <= 32767; ++limit) {
    std::uint32_t expected = limit * 7 / 10;
    const std::uint32_t tenths = limit * 7 % 10;
    if (tenths > 5) ++expected;
    if (tenths == 5 && 2 * limit <= 5 * std::bit_floor(expected)) {
      ++halves;
      expected += expected % 2;
    }
    ASSERT_EQ(nearThreshold(static_cast<std::int32_t>(limit)), static_cast<std::int32_t>(expected)) << limit;
  }
  EXPECT_GT(halves, 1000) << "nothing was tried";
}

TEST(Reach, IsStrictAtBothEnds) {
  EXPECT_EQ(reach(70, 100), Reach::below);
  EXPECT_EQ(reach(71, 100), Reach::close);
  EXPECT_EQ(reach(100, 100), Reach::close);
  EXPECT_EQ(reach(101, 100), Reach::passed);
  EXPECT_EQ(reach(42, 60), Reach::below);
  EXPECT_EQ(reach(43, 60), Reach::close);
  EXPECT_EQ(reach(61, 60), Reach::passed);
}

TEST(Reach, OfALimitThatIsNotPositive) {
  EXPECT_EQ(reach(0, 0), Reach::below);
  EXPECT_EQ(reach(1, 0), Reach::passed);
  EXPECT_EQ(reach(-1, 0), Reach::below);
  EXPECT_EQ(reach(1, -300), Reach::passed);
  EXPECT_EQ(reach(-1, 1), Reach::below);
  EXPECT_EQ(reach(1, 1), Reach::below) << "70 % of one is one";
}

TEST(ElapsedSeconds, GoesOverMidnight) {
  EXPECT_EQ(elapsedSeconds(3600, 3600), 0);
  EXPECT_EQ(elapsedSeconds(3600, 3661), 61);
  EXPECT_EQ(elapsedSeconds(86399, 0), 1);
  EXPECT_EQ(elapsedSeconds(3601, 3600), 86399);
}

TEST(TimeOfDay, GoesRoundTheDayInBothDirections) {
  EXPECT_EQ(timeOfDay(5400), 5400);
  EXPECT_EQ(timeOfDay(86400), 0);
  EXPECT_EQ(timeOfDay(-300), 86100);
  EXPECT_EQ(timeOfDay(-32760), 53640);
}

}  // namespace
}  // namespace pelvaro::monitor
