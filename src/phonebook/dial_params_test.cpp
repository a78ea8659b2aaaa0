#include "phonebook/dial_params.h"

#include <gtest/gtest.h>

#include "platform/fake/fake_dial_service.h"

namespace pelvaro {
namespace {

using fake::Lines;
using namespace Module1;
using Buffer = std::vector<std::uint8_t>;

struct DialParamsTest : testing::Test {
  fake::Journal journal;
  fake::FakeDialService ras{journal};
  std::vector<Buffer> asked;           // what the service was given, each as long as it says
  std::vector<std::uint32_t> answers;  // one a call
  Buffer buffer;
  bool saved = false;

  void SetUp() override {
    ras.onDialParams = [this](void* params, std::int32_t*) {
      const auto* bytes = static_cast<const std::uint8_t*>(params);
      const std::uint32_t size = get32({bytes, 4}, 0);
      asked.emplace_back(bytes, bytes + size);
      return answers.at(asked.size() - 1);
    };
  }
};

Buffer laid(std::size_t size, char low, char high, const std::string& name) {
  Buffer bytes(size);
  bytes[0] = static_cast<std::uint8_t>(low);
  bytes[1] = static_cast<std::uint8_t>(high);
  std::copy(name.begin(), name.end(), bytes.begin() + 4);
  return bytes;
}

TEST_F(DialParamsTest, FirstSizeTakenEndsTheSearch) {
  answers = {0};
  EXPECT_EQ(GetEntryDialParams(ras, buffer, nullptr, "Corvanti-Home", saved), 0u);
  EXPECT_EQ(journal.take(), (Lines{"RasGetEntryDialParams null 1060 \"Corvanti-Home\""}));
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked[0], laid(1060, '\x24', '\x04', "Corvanti-Home"));
}

TEST_F(DialParamsTest, EveryResultButZeroGoesOnToTheNextSize) {
  for (const std::uint32_t first : {632u, 623u, 1u, 0xFFFFFFFFu}) {
    asked.clear();
    answers = {first, 623, 0};
    EXPECT_EQ(GetEntryDialParams(ras, buffer, "book", "Home", saved), 0u);
    EXPECT_EQ(journal.take(),
              (Lines{"RasGetEntryDialParams \"book\" 1060 \"Home\"", "RasGetEntryDialParams \"book\" 1052 \"Home\"",
                     "RasGetEntryDialParams \"book\" 816 \"Home\""}));
    ASSERT_EQ(asked.size(), 3u);
    EXPECT_EQ(asked[1], laid(1052, '\x1C', '\x04', "Home"));
    EXPECT_EQ(asked[2], laid(816, '\x30', '\x03', "Home"));
    EXPECT_EQ(buffer.size(), 816u);
  }
}

TEST_F(DialParamsTest, SecondSizeTakenEndsTheSearch) {
  answers = {632, 0};
  EXPECT_EQ(GetEntryDialParams(ras, buffer, nullptr, "Home", saved), 0u);
  EXPECT_EQ(asked.size(), 2u);
  EXPECT_EQ(buffer.size(), 1052u);
}

TEST_F(DialParamsTest, ResultIsTheLastCalls) {
  answers = {623, 632, 5};
  EXPECT_EQ(GetEntryDialParams(ras, buffer, nullptr, "Home", saved), 5u);
  EXPECT_EQ(asked.size(), 3u);
}

TEST_F(DialParamsTest, NameIsCutAt256BytesAnd20ForTheOldestSize) {
  answers = {632, 632, 0};
  const std::string name(400, 'n');
  GetEntryDialParams(ras, buffer, nullptr, name, saved);
  ASSERT_EQ(asked.size(), 3u);
  EXPECT_EQ(asked[0], laid(1060, '\x24', '\x04', std::string(256, 'n')));
  EXPECT_EQ(asked[1], laid(1052, '\x1C', '\x04', std::string(256, 'n')));
  EXPECT_EQ(asked[2], laid(816, '\x30', '\x03', std::string(20, 'n')));
}

TEST_F(DialParamsTest, BufferIsWhatTheServiceFilledIn) {
  ras.onDialParams = [](void* params, std::int32_t*) {
    std::fill_n(static_cast<std::uint8_t*>(params) + 4, 1056, std::uint8_t{0xAB});
    return 0u;
  };
  buffer.assign(5000, 0xCD);
  GetEntryDialParams(ras, buffer, nullptr, "Home", saved);
  Buffer expected(1060, 0xAB);
  expected[0] = 0x24, expected[1] = 0x04, expected[2] = expected[3] = 0;
  EXPECT_EQ(buffer, expected);
}

TEST_F(DialParamsTest, RefusedSizeLeavesNothingInTheNextBuffer) {
  int calls = 0;
  ras.onDialParams = [&](void* params, std::int32_t*) -> std::uint32_t {
    if (++calls == 2) return 0;
    std::fill_n(static_cast<std::uint8_t*>(params), 1060, std::uint8_t{0xAB});
    return 632;
  };
  GetEntryDialParams(ras, buffer, nullptr, "Home", saved);
  EXPECT_EQ(buffer, laid(1052, '\x1C', '\x04', "Home"));
}

TEST_F(DialParamsTest, PasswordFlagIsTrueForAnyNonZeroValue) {
  for (const std::int32_t value : {0, 1, -1, 256, 2}) {
    ras.onDialParams = [&](void*, std::int32_t* flag) {
      *flag = value;
      return 0u;
    };
    for (const bool before : {false, true}) {
      saved = before;
      GetEntryDialParams(ras, buffer, nullptr, "Home", saved);
      EXPECT_EQ(saved, value != 0) << value;
    }
  }
}

TEST_F(DialParamsTest, PasswordFlagIsFalseWhenTheServiceLeavesIt) {
  answers = {0};
  saved = true;
  GetEntryDialParams(ras, buffer, nullptr, "Home", saved);
  EXPECT_FALSE(saved);
}

// ---- the size that a dial is made with ----

TEST_F(DialParamsTest, AcceptedSizeIsTheFirstThatAnswers623) {
  const struct {
    std::vector<std::uint32_t> answers;
    std::uint32_t size;
    std::size_t calls;
  } table[] = {
      {{623, 0, 0}, 1060, 1},  {{632, 623, 0}, 1052, 2}, {{0, 623, 0}, 1052, 2},  {{632, 632, 623}, 816, 3},
      {{632, 632, 632}, 0, 3}, {{0, 0, 0}, 0, 3},        {{622, 624, 603}, 0, 3},
  };
  for (const auto& row : table) {
    asked.clear();
    answers = row.answers;
    EXPECT_EQ(acceptedDialParamsSize(ras), row.size);
    EXPECT_EQ(asked.size(), row.calls);
  }
}

TEST_F(DialParamsTest, AcceptedSizeIsAskedWithNothingButTheSize) {
  answers = {632, 632, 632};
  acceptedDialParamsSize(ras);
  EXPECT_EQ(journal.take(), (Lines{"RasGetEntryDialParams null 1060 \"\"", "RasGetEntryDialParams null 1052 \"\"",
                                   "RasGetEntryDialParams null 816 \"\""}));
  EXPECT_EQ(asked, (std::vector<Buffer>{laid(1060, '\x24', '\x04', ""), laid(1052, '\x1C', '\x04', ""),
                                        laid(816, '\x30', '\x03', "")}));
}

// ---- packing ----

void put(Buffer& bytes, std::size_t offset, const std::string& text) {
  for (const char c : text) bytes.at(offset++) = static_cast<std::uint8_t>(c);
}

const DialRecord kShort{"entry", "number", "callback", "user", "password", "domain"};
const DialRecord kLong{std::string(400, 'e'), std::string(400, 'n'), std::string(400, 'c'),
                       std::string(400, 'u'), std::string(400, 'p'), std::string(400, 'd')};

TEST(PackDialParams, SizesOf1060And1052HaveAnEntryNameOf257Bytes) {
  for (const auto& [size, low] : {std::pair{1060u, '\x24'}, {1052u, '\x1C'}}) {
    Buffer brief = laid(size, low, '\x04', "entry");
    put(brief, 261, "number");
    put(brief, 390, "callback");
    put(brief, 519, "user");
    put(brief, 776, "password");
    put(brief, 1033, "domain");
    EXPECT_EQ(packDialParams(kShort, size), brief);

    Buffer full = laid(size, low, '\x04', std::string(257, 'e'));
    put(full, 261, std::string(129, 'n'));
    put(full, 390, std::string(129, 'c'));
    put(full, 519, std::string(257, 'u'));
    put(full, 776, std::string(257, 'p'));
    put(full, 1033, std::string(16, 'd'));
    EXPECT_EQ(packDialParams(kLong, size), full);
  }
}

TEST(PackDialParams, SizeOf816HasAnEntryNameOf21Bytes) {
  Buffer brief = laid(816, '\x30', '\x03', "entry");
  put(brief, 25, "number");
  put(brief, 154, "callback");
  put(brief, 283, "user");
  put(brief, 540, "password");
  put(brief, 797, "domain");
  EXPECT_EQ(packDialParams(kShort, 816), brief);

  Buffer full = laid(816, '\x30', '\x03', std::string(21, 'e'));
  put(full, 25, std::string(129, 'n'));
  put(full, 154, std::string(129, 'c'));
  put(full, 283, std::string(257, 'u'));
  put(full, 540, std::string(257, 'p'));
  put(full, 797, std::string(16, 'd'));
  EXPECT_EQ(packDialParams(kLong, 816), full);
}

TEST(PackDialParams, TextsThatFillTheirFieldExactlyHaveNoTerminator) {
  DialRecord record;
  record.EntryName = std::string(257, 'e');
  record.PhoneNumber = "1";
  Buffer expected = laid(1060, '\x24', '\x04', std::string(257, 'e') + "1");
  EXPECT_EQ(packDialParams(record, 1060), expected);
}

TEST(PackDialParams, EmptyTextsWriteNothing) { EXPECT_EQ(packDialParams({}, 816), laid(816, '\x30', '\x03', "")); }

TEST(PackDialParams, SmallerBufferCutsTheFieldsAtItsEnd) {
  Buffer expected(780);
  expected[0] = 0x0C, expected[1] = 0x03;
  put(expected, 4, std::string(257, 'e'));
  put(expected, 261, std::string(129, 'n'));
  put(expected, 390, std::string(129, 'c'));
  put(expected, 519, std::string(257, 'u'));
  put(expected, 776, "pppp");
  EXPECT_EQ(packDialParams(kLong, 780), expected);
  EXPECT_EQ(packDialParams(kLong, 0), Buffer{});
}

}  // namespace
}  // namespace pelvaro
