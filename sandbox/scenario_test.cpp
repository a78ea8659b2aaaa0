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
  EXPECT_EQ(scenario->receiveRate, 20480u);
  EXPECT_EQ(scenario->sendRate, 4096u);
  EXPECT_EQ(scenario->receivedAtStart, 0u);
  EXPECT_EQ(scenario->sentAtStart, 0u);
  EXPECT_TRUE(scenario->ethernet);
  EXPECT_TRUE(scenario->failures.empty());
}

TEST(ScenarioText, EveryWordIsTaken) {
  std::string message;
  const auto scenario = parseScenario(
      "pace 20 # quick\ntimeout 500\nstructureSize 1672\ndialParamsSizes 1052 816\nend 0x1000\nentries 256\n"
      "connections 12\nlistDialing on\njournal on\nreceiveRate 2000\nsendRate 0\nreceivedAtStart 4294960000\n"
      "sentAtStart 17\nethernet off\nfail enumConnections 5 times 3\nfail dial 0x8007000E\nfail getIfTable 50\n",
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
  EXPECT_EQ(scenario->receiveRate, 2000u);
  EXPECT_EQ(scenario->sendRate, 0u);
  EXPECT_EQ(scenario->receivedAtStart, 4294960000u);
  EXPECT_EQ(scenario->sentAtStart, 17u);
  EXPECT_FALSE(scenario->ethernet);
  ASSERT_EQ(scenario->failures.size(), 3u);
  EXPECT_EQ(scenario->failures[0].verb, "enumConnections");
  EXPECT_EQ(scenario->failures[0].code, 5u);
  EXPECT_EQ(scenario->failures[0].times, 3u);
  EXPECT_EQ(scenario->failures[1].code, 0x8007000Eu);
  EXPECT_EQ(scenario->failures[1].times, PlantedFailure::kAlways);
  EXPECT_EQ(scenario->failures[2].verb, "getIfTable");
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

TEST(ScenarioText, TrafficThatIsNotUnderstoodIsNamed) {
  for (const char* line : {"receiveRate", "receiveRate 4294967296", "sendRate -1", "receivedAtStart 4294967296",
                           "sentAtStart 1k", "ethernet 2", "fail GetIfTable 5"}) {
    std::string message;
    EXPECT_FALSE(parseScenario(line, message)) << line;
    EXPECT_EQ(message, std::string("line 1: this is not understood: ") + line);
  }
}

}  // namespace
}  // namespace pelvaro::line
