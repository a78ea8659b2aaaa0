#include "ui/colour_scheme.h"

#include <gtest/gtest.h>

namespace pelvaro {
namespace {

constexpr Colour kNavy = 0x800000, kPaleBlue = 0xF8E4D8;  // blue in the highest byte

TEST(ContrastRatio, GivesThePublishedFigures) {
  EXPECT_NEAR(contrastRatio(0xFFFFFF, 0x000000), 21.0, 0.01);
  EXPECT_NEAR(contrastRatio(kNavy, 0xFFFFFF), 16.0, 0.1);
  EXPECT_NEAR(contrastRatio(kPaleBlue, kNavy), 12.5, 0.1);
  EXPECT_NEAR(contrastRatio(0x777777, 0x777777), 1.0, 0.001);
}

TEST(ReadableGround, KeepsTheSystemsColourWhereTheTextStaysReadable) {
  EXPECT_EQ(readableGround(0xC8D0D4, kNavy), 0xC8D0D4u);  // as on Windows XP
  EXPECT_EQ(readableGround(0xFFFFFF, kNavy), 0xFFFFFFu);
}

TEST(ReadableGround, TakesThePaleBlueWhereItDoesNot) {
  EXPECT_EQ(readableGround(0x000000, kNavy), kPaleBlue);  // as on Windows 10 and 11
  EXPECT_EQ(readableGround(0x808080, kNavy), kPaleBlue);
}

}  // namespace
}  // namespace pelvaro
