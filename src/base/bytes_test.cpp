#include "base/bytes.h"

#include <gtest/gtest.h>

#include <vector>

namespace pelvaro {
namespace {

TEST(Put32, WritesTheLowestByteFirst) {
  std::vector<std::uint8_t> buffer(6, 0xEE);
  put32(buffer, 1, 0x11223344);
  EXPECT_EQ(buffer, (std::vector<std::uint8_t>{0xEE, 0x44, 0x33, 0x22, 0x11, 0xEE}));
}

TEST(Put32, IsCutAtTheEndOfTheBuffer) {
  std::vector<std::uint8_t> buffer(3, 0);
  put32(buffer, 1, 0x11223344);
  EXPECT_EQ(buffer, (std::vector<std::uint8_t>{0, 0x44, 0x33}));
  put32(buffer, 100, 1);
  EXPECT_EQ(buffer[0], 0);
}

TEST(Get32, BytesBehindTheEndReadAsZero) {
  const std::vector<std::uint8_t> buffer{0x44, 0x33, 0x22};
  EXPECT_EQ(get32(buffer, 0), 0x223344u);
  EXPECT_EQ(get32(buffer, 2), 0x22u);
  EXPECT_EQ(get32(buffer, 3), 0u);
}

TEST(Wipe, LeavesOnlyZeros) {
  std::string secret = "secret";
  wipe(secret);
  EXPECT_EQ(secret, std::string(6, '\0'));
}

}  // namespace
}  // namespace pelvaro
