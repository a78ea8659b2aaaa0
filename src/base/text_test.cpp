#include "base/text.h"

#include <gtest/gtest.h>

namespace pelvaro {
namespace {

using namespace std::string_view_literals;

TEST(Trimmed, TakesBlanksOnly) {
  EXPECT_EQ(trimmed("  a b  "), "a b");
  EXPECT_EQ(trimmed("\t a\r\n"), "\t a\r\n");
  EXPECT_EQ(trimmed(" \0 "sv), "\0"sv);
  EXPECT_EQ(trimmed("    "), "");
  EXPECT_EQ(trimmed(""), "");
}

TEST(UpToNul, GivesAllWhenThereIsNone) {
  EXPECT_EQ(upToNul("abc\0def"sv), "abc");
  EXPECT_EQ(upToNul("abc"), "abc");
  EXPECT_EQ(upToNul("\0abc"sv), "");
}

TEST(Lowered, LeavesBytesOver127Alone) { EXPECT_EQ(lowered("MoDem \xC4\xE4Z["), "modem \xC4\xE4z["); }

TEST(Contains, ComparesBytesExactly) {
  EXPECT_TRUE(contains("a modem here", "modem"));
  EXPECT_FALSE(contains("a Modem here", "modem"));
  EXPECT_TRUE(contains("anything", ""));
}

}  // namespace
}  // namespace pelvaro
