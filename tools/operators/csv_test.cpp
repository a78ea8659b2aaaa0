#include "csv.h"

#include <gtest/gtest.h>

namespace pelvaro::operators {
namespace {

using namespace std::string_literals;

// The rows as "line:field|field", and the damage last, as "line!damage".
std::vector<std::string> read(std::string_view text) {
  std::vector<std::string> result;
  CsvReader rows(text, 3);
  while (const auto row = rows.next()) {
    auto& shown = result.emplace_back(std::to_string(row->line) + ":");
    for (const auto& field : row->fields) shown += (&field == &row->fields.front() ? "" : "|") + field;
  }
  if (!rows.damage().empty()) result.push_back(std::to_string(rows.line()) + "!" + rows.damage());
  EXPECT_FALSE(rows.next());
  return result;
}

using Rows = std::vector<std::string>;

TEST(CsvReader, TakesLinesThatEndWithLfOrCrLfOrNotAtAll) {
  EXPECT_EQ(read("a,b\nc\r\nd"), (Rows{"1:a|b", "2:c", "3:d"}));
  EXPECT_EQ(read(""), Rows());
  EXPECT_EQ(read("a\rb\n"), Rows{"1:a\rb"}) << "a lone CR is text";
}

TEST(CsvReader, PassesOverEmptyLinesButNotOverEmptyFields) {
  EXPECT_EQ(read("\n\r\na\n\n,\nb,"), (Rows{"3:a", "5:|", "6:b|"}));
  EXPECT_EQ(read("\"\"\n"), Rows{"1:"});
}

TEST(CsvReader, TakesQuotedFields) {
  EXPECT_EQ(read("\"a,b\",\"c\"\"d\",\"\"\nx\n"), (Rows{"1:a,b|c\"d|", "2:x"}));
  EXPECT_EQ(read("\"a\nb\r\nc\"\r\nx"), (Rows{"1:a\nb\r\nc", "4:x"}));
  EXPECT_EQ(read("a\"b\",c"), Rows{"1:a\"b\"|c"}) << "a quote inside is text";
  EXPECT_EQ(read("\"\"\"\""), Rows{"1:\""});
}

TEST(CsvReader, CountsTheFieldsThatItDoesNotKeep) {
  const std::string text = "a,\"b\",c,\"d\n\"," + std::string(100'000, ',') + "\nx,y";
  CsvReader rows(text, 3);
  const auto row = rows.next();
  ASSERT_TRUE(row);
  EXPECT_EQ(row->fields, (Rows{"a", "b", "c"}));
  EXPECT_EQ(row->count, 100'005u);
  const auto after = rows.next();
  ASSERT_TRUE(after);
  EXPECT_EQ(after->line, 3u);
  EXPECT_EQ(after->count, 2u);
}

TEST(CsvReader, NamesTheLineThatADamagedRowBeginsOn) {
  EXPECT_EQ(read("a\n\"b\n\nc"), (Rows{"1:a", "2!a quote that is not closed"}));
  EXPECT_EQ(read("\"b\nc\"d\ne"), (Rows{"1!text behind a closing quote"}));
}

TEST(AppendCsvField, QuotesOnlyWhatNeedsIt) {
  std::string text;
  for (const auto* field : {"a b", "", "a,b", "say \"x\"", "a\nb", "a\r"}) {
    appendCsvField(field, text);
    text += ';';
  }
  EXPECT_EQ(text, "a b;;\"a,b\";\"say \"\"x\"\"\";\"a\nb\";\"a\r\";");
}

TEST(AppendCsvField, EveryFieldComesBack) {
  for (int a = 0; a < 256; ++a) {
    for (const char b : {'"', '\r', '\n', ',', 'x'}) {
      const std::string field{static_cast<char>(a), b};
      std::string text;
      appendCsvField(field, text);
      CsvReader rows(text, 1);
      const auto row = rows.next();
      ASSERT_TRUE(row);
      EXPECT_EQ(row->fields, std::vector<std::string>{field});
    }
  }
}

}  // namespace
}  // namespace pelvaro::operators
