#include "scenario.h"

#include <gtest/gtest.h>

namespace pelvaro::line {
namespace {

TEST(ScenarioText, WithoutWordsEverythingIsAsUsual) {
  std::string message;
  const auto scenario = parseScenario("\n  # nothing\r\n", message);
  ASSERT_TRUE(scenario);
  EXPECT_EQ(scenario->pace, 350u);
  EXPECT_EQ(scenario->structureSize, 2884u);
  EXPECT_EQ(scenario->end, 0x2000u);
  EXPECT_EQ(scenario->dialParamsSizes, (std::vector<std::uint32_t>{1060, 1052, 816}));
  EXPECT_TRUE(scenario->failures.empty());
}

TEST(ScenarioText, EveryWordIsTaken) {
  std::string message;
  const auto scenario = parseScenario(
      "pace 20 # quick\ntimeout 500\nstructureSize 1672\ndialParamsSizes 1052 816\nend 0x1000\nentries 256\n"
      "connections 12\nlistDialing on\njournal on\nfail enumConnections 5 times 3\nfail dial 0x8007000E\n",
      message);
  ASSERT_TRUE(scenario) << message;
  EXPECT_EQ(scenario->pace, 20u);
  EXPECT_EQ(scenario->timeout, 500u);
  EXPECT_EQ(scenario->structureSize, 1672u);
  EXPECT_EQ(scenario->dialParamsSizes, (std::vector<std::uint32_t>{1052, 816}));
  EXPECT_EQ(scenario->end, 0x1000u);
  EXPECT_EQ(scenario->entries, 256u);
  EXPECT_EQ(scenario->connections, 12u);
  EXPECT_TRUE(scenario->listDialing);
  EXPECT_TRUE(scenario->journal);
  ASSERT_EQ(scenario->failures.size(), 2u);
  EXPECT_EQ(scenario->failures[0].verb, "enumConnections");
  EXPECT_EQ(scenario->failures[0].code, 5u);
  EXPECT_EQ(scenario->failures[0].times, 3u);
  EXPECT_EQ(scenario->failures[1].code, 0x8007000Eu);
  EXPECT_EQ(scenario->failures[1].times, PlantedFailure::kAlways);
}

TEST(ScenarioText, WhatIsNotUnderstoodIsNamed) {
  for (const char* line : {"pace", "pace fast", "pace -1", "pace 1 2", "speed 5", "structureSize 1000", "end 0x2002",
                           "end 1", "journal yes", "dialParamsSizes 1064", "fail", "fail dial", "fail everything 5",
                           "fail dial 5 times", "fail dial 5 for 3", "entries 1000000000"}) {
    std::string message;
    EXPECT_FALSE(parseScenario(std::string("pace 1\n") + line + "\n", message)) << line;
    EXPECT_EQ(message, std::string("line 2: this is not understood: ") + line);
  }
}

}  // namespace
}  // namespace pelvaro::line
