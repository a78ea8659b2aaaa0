#include "line_fixture.h"

namespace pelvaro::line {
namespace {

const std::vector<Told> kWholeDial = {{kWindow, 0, 0},  {kWindow, 1, 0},     {kWindow, 2, 0},  {kWindow, 3, 0},
                                      {kWindow, 4, 0},  {kWindow, 5, 0},     {kWindow, 14, 0}, {kWindow, 18, 0},
                                      {kWindow, 21, 0}, {kWindow, 0x2000, 0}};

using DialStates = LineTest;

TEST_F(DialStates, ADialPassesEveryStateOnceInOrder) {
  ASSERT_EQ(dial(params("Work")), 0u);
  EXPECT_NE(handle_, 0u);
  EXPECT_TRUE(told_.empty()) << "the call itself tells nothing";
  settle();
  EXPECT_EQ(told_, kWholeDial);
  EXPECT_EQ(connected(), std::vector<std::string>{"Work"});
}

TEST_F(DialStates, ThePhoneIsToldNumberAndAccessPoint) {
  Phone& phone = ports_.plug("COM5", table());
  ASSERT_EQ(dial(params("Corvanti-Office")), 0u);
  settle();
  EXPECT_EQ(phone.number(), "*99#");
  EXPECT_TRUE(phone.online());
}

TEST_F(DialStates, ANumberInTheParametersGoesBeforeTheEntrys) {
  Phone& phone = ports_.plug("COM5", table());
  ASSERT_EQ(dial(params("Work", kPracticeUser, kPracticePassword, "555123")), 0u);
  settle();
  EXPECT_EQ(phone.number(), "555123");
}

TEST_F(DialStates, AConnectionIsNotEnumeratedBeforeItIsUp) {
  ASSERT_EQ(dial(params("Work")), 0u);
  stepUntil(kLogonNetwork);
  EXPECT_TRUE(connected().empty());
  stepUntil(kConnected);
  EXPECT_EQ(connected(), std::vector<std::string>{"Work"});
}

TEST_F(DialStates, ListDialingEnumeratesItFromTheStart) {
  Scenario scenario = quick();
  scenario.listDialing = true;
  line_.setScenario(scenario);
  ASSERT_EQ(dial(params("Work")), 0u);
  EXPECT_EQ(connected(), std::vector<std::string>{"Work"});
}

TEST_F(DialStates, EachStateIsShownForThePace) {
  Scenario scenario = quick();
  scenario.pace = 100;
  line_.setScenario(scenario);
  ASSERT_EQ(dial(params("Work")), 0u);
  line_.step(1000);
  line_.step(1099);
  EXPECT_EQ(told_.size(), 1u);
  line_.step(1100);
  EXPECT_EQ(told_.size(), 2u);
  line_.step(1150);
  EXPECT_EQ(told_.size(), 2u);
}

TEST_F(DialStates, TheScenarioNamesTheLastState) {
  for (const std::uint32_t end : {0x1000u, 0x2000u, 0x2001u}) {
    Scenario scenario = quick();
    scenario.end = end;
    line_.setScenario(scenario);
    told_.clear();
    ASSERT_EQ(dial(params("Work")), 0u);
    settle();
    EXPECT_EQ(told_.back(), (Told{kWindow, end, 0}));
    EXPECT_EQ(connected().size(), end == 0x2001 ? 0u : 1u);
    EXPECT_EQ(line_.hangUp(handle_), 0u);
  }
}

struct Failure {
  const char* number;
  std::uint32_t state, error;
};

TEST_F(DialStates, SpecialNumbersFailInTheirStateWithTheirCode) {
  constexpr Failure kFailures[] = {
      {"676", kConnectDevice, 676}, {"678", kConnectDevice, 678}, {"679", kConnectDevice, 679},
      {"680", kConnectDevice, 680}, {"692", kConnectDevice, 692}, {"638", kConnectDevice, 678},
      {"691", kAuthenticate, 691},  {"629", kAuthenticate, 629},  {"718", kAuthenticate, 718}};
  Scenario scenario = quick();
  scenario.timeout = 50;
  line_.setScenario(scenario);
  for (const Failure& failure : kFailures) {
    SCOPED_TRACE(failure.number);
    told_.clear();
    ASSERT_EQ(dial(params("Work", kPracticeUser, kPracticePassword, failure.number)), 0u);
    settle();
    EXPECT_EQ(told_.back(), (Told{kWindow, failure.state, failure.error}));
    EXPECT_EQ(std::count_if(told_.begin(), told_.end(), [](const Told& t) { return t.error != 0; }), 1);
    EXPECT_TRUE(connected().empty());
    EXPECT_EQ(line_.hangUp(handle_), 0u) << "a failed connection waits for its hang-up";
  }
}

TEST_F(DialStates, EveryAnswerOfAPhoneHasItsCode) {
  constexpr std::pair<Answer, std::uint32_t> kAnswers[] = {
      {Answer::kBusy, 676},  {Answer::kNoAnswer, 678}, {Answer::kNoCarrier, 679}, {Answer::kNoDialtone, 680},
      {Answer::kError, 692}, {Answer::kSilent, 678},   {Answer::kMute, 692}};
  Phone& phone = ports_.plug("COM5", table());
  Scenario scenario = quick();
  scenario.timeout = 50;
  line_.setScenario(scenario);
  for (const auto& [answer, code] : kAnswers) {
    SCOPED_TRACE(answerName(answer));
    phone.switches().answer = answer;
    told_.clear();
    ASSERT_EQ(dial(params("Work")), 0u);
    settle();
    EXPECT_EQ(told_.back(), (Told{kWindow, kConnectDevice, code}));
    EXPECT_EQ(line_.hangUp(handle_), 0u);
  }
}

TEST_F(DialStates, AWrongPasswordIsRefusedWhileAuthenticating) {
  for (const Bytes& wrong :
       {params("Work", "guest", "wrong"), params("Work", "nobody", "practice"), params("Work", "", "")}) {
    told_.clear();
    ASSERT_EQ(dial(wrong), 0u);
    settle();
    EXPECT_EQ(told_.back(), (Told{kWindow, kAuthenticate, 691}));
    EXPECT_EQ(line_.hangUp(handle_), 0u);
  }
}

TEST_F(DialStates, SixteenAsterisksStandForTheSavedPassword) {
  ASSERT_EQ(dial(params("Corvanti-Office", kPracticeUser, kMaskedPassword)), 0u);
  settle();
  EXPECT_EQ(told_.back().state, kConnected);
  ASSERT_EQ(line_.hangUp(handle_), 0u);
  ASSERT_EQ(dial(params("Work", kPracticeUser, kMaskedPassword)), 0u) << "nothing is saved with this one";
  settle();
  EXPECT_EQ(told_.back().error, 691u);
}

TEST_F(DialStates, AMissingPortOrModemIs797WhileOpening) {
  ports_.unplug("COM5");
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  EXPECT_EQ(told_, (std::vector<Told>{{kWindow, 0, 0}, {kWindow, 0, 797}}));

  Phonebook book = firstPhonebook();
  book.devices.clear();
  line_.setPhonebook(book);
  told_.clear();
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  EXPECT_EQ(told_.back(), (Told{kWindow, 0, 797}));
}

TEST_F(DialStates, APortThatAnotherProgramHasIs633) {
  ports_.occupy("COM5", true);
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  EXPECT_EQ(told_.back(), (Told{kWindow, 0, 633}));
}

TEST_F(DialStates, APortOfAnotherConnectionIs633AndTheFirstGoesOn) {
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  const std::uint32_t first = handle_;
  ASSERT_EQ(dial(params("Corvanti-Office")), 0u);
  settle();
  EXPECT_EQ(told_.back(), (Told{kWindow, 0, 633}));
  EXPECT_EQ(connected(), std::vector<std::string>{"Work"});
  EXPECT_EQ(line_.hangUp(handle_), 0u);
  EXPECT_EQ(line_.hangUp(first), 0u);
}

TEST_F(DialStates, AFailedConnectionHoldsItsPortUntilItIsHungUp) {
  ASSERT_EQ(dial(params("Work", "guest", "wrong")), 0u);
  settle();
  const std::uint32_t failed = handle_;
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  EXPECT_EQ(told_.back(), (Told{kWindow, 0, 633}));
  ASSERT_EQ(line_.hangUp(handle_), 0u);
  ASSERT_EQ(line_.hangUp(failed), 0u);
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  EXPECT_EQ(told_.back().state, kConnected);
}

TEST_F(DialStates, TwoConnectionsAreUpAtOnceOnTwoPorts) {
  ASSERT_EQ(dial(params("Corvanti-Office")), 0u);
  const std::uint32_t first = handle_;
  ASSERT_EQ(dial(params("Corvanti-Home")), 0u);
  EXPECT_NE(first, handle_);
  settle();
  EXPECT_EQ(connected(), (std::vector<std::string>{"Corvanti-Office", "Corvanti-Home"}));
  EXPECT_EQ(line_.hangUp(first), 0u);
  EXPECT_EQ(connected(), std::vector<std::string>{"Corvanti-Home"});
}

TEST_F(DialStates, TheSameEntryIsNotDialedTwiceAtOnce) {
  ASSERT_EQ(dial(params("Work")), 0u);
  EXPECT_EQ(dial(params("WORK")), 756u);
  EXPECT_EQ(handle_, 0u);
}

TEST_F(DialStates, AHangUpInEveryStateEndsItAndFreesThePort) {
  for (const Told& until : kWholeDial) {
    SCOPED_TRACE(until.state);
    told_.clear();
    Phone& phone = ports_.plug("COM5", table());
    ASSERT_EQ(dial(params("Work")), 0u);
    stepUntil(until.state);
    const std::size_t before = told_.size();
    ASSERT_EQ(line_.hangUp(handle_), 0u);
    EXPECT_EQ(line_.hangUp(handle_), 6u);
    settle();
    EXPECT_EQ(told_.size(), before) << "nothing is told after the hang-up";
    EXPECT_EQ(phone.number(), "") << "the call has ended";
    EXPECT_TRUE(connected().empty());
    ASSERT_EQ(dial(params("Work")), 0u);
    settle();
    EXPECT_EQ(told_.back().state, kConnected) << "the port is free again";
    ASSERT_EQ(line_.hangUp(handle_), 0u);
  }
}

TEST_F(DialStates, AHangUpBeforeTheFirstStepTellsNothing) {
  ASSERT_EQ(dial(params("Work")), 0u);
  ASSERT_EQ(line_.hangUp(handle_), 0u);
  settle();
  EXPECT_TRUE(told_.empty());
}

TEST_F(DialStates, AHangUpFromInsideANotificationIsTaken) {
  for (const Told& at : kWholeDial) {
    SCOPED_TRACE(at.state);
    told_.clear();
    onTold_ = [&](const Told& told) {
      if (told.state == at.state) {
        EXPECT_EQ(line_.hangUp(handle_), 0u);
      }
    };
    ASSERT_EQ(dial(params("Work")), 0u);
    settle();
    EXPECT_EQ(told_.back(), at);
    EXPECT_FALSE(line_.anythingUp());
  }
}

TEST_F(DialStates, AStepFromInsideANotificationIsTaken) {
  onTold_ = [&](const Told&) {
    if (told_.size() < 100) line_.step(now_ += 1);
  };
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  EXPECT_EQ(told_, kWholeDial);
}

TEST_F(DialStates, APulledCableEndsTheDialInTheStateItHasReached) {
  for (std::size_t i = 1; i + 1 < kWholeDial.size(); ++i) {
    SCOPED_TRACE(kWholeDial[i].state);
    ports_.plug("COM5", table());
    told_.clear();
    ASSERT_EQ(dial(params("Work")), 0u);
    stepUntil(kWholeDial[i].state);
    ports_.unplug("COM5");
    settle();
    EXPECT_EQ(told_.back(), (Told{kWindow, kWholeDial[i].state, 619}));
    EXPECT_EQ(line_.hangUp(handle_), 0u);
  }
}

TEST_F(DialStates, APulledCableTakesTheConnectionOutOfTheEnumeration) {
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  told_.clear();
  ports_.unplug("COM5");
  line_.step(now_ += 1);
  EXPECT_TRUE(connected().empty());
  EXPECT_TRUE(told_.empty());
  EXPECT_EQ(line_.hangUp(handle_), 6u);
}

TEST_F(DialStates, ALostCarrierTakesTheConnectionOutOfTheEnumeration) {
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  ports_.say("COM5", "RING");
  line_.step(now_ += 1);
  EXPECT_EQ(connected().size(), 1u) << "other words are no end";
  ports_.say("COM5", "NO CARRIER");
  line_.step(now_ += 1);
  EXPECT_TRUE(connected().empty());
}

TEST_F(DialStates, AnEntryDeletedWhileConnectedKeepsItsConnection) {
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  EXPECT_EQ(line_.deleteEntry(nullptr, "Work"), 0u);
  line_.step(now_ += 1);
  EXPECT_EQ(connected(), std::vector<std::string>{"Work"});
  EXPECT_EQ(line_.hangUp(handle_), 0u);
}

TEST_F(DialStates, ACallLeftOpenByAnotherProgramDoesNotSwallowTheDial) {
  Phone& phone = ports_.plug("COM5", table());
  phone.feed("ATD*99#\r");
  phone.feed("guest\rpractice\r");
  ASSERT_TRUE(phone.online());
  ASSERT_EQ(dial(params("Work")), 0u);
  settle();
  EXPECT_EQ(told_.back().state, kConnected);
}

TEST_F(DialStates, FailedConnectionsThatNobodyHangsUpAreForgottenInTheEnd) {
  ports_.unplug("COM5");
  ASSERT_EQ(dial(params("Work")), 0u);
  const std::uint32_t first = handle_;
  settle();
  for (int i = 0; i < 1024; ++i) {
    ASSERT_EQ(dial(params("Work")), 0u);
    settle();
  }
  EXPECT_EQ(line_.hangUp(first), 6u);
  EXPECT_EQ(line_.hangUp(handle_), 0u);
}

TEST_F(DialStates, ThousandsOfDialsOneAfterTheOther) {
  for (int i = 0; i < 3000; ++i) {
    ASSERT_EQ(dial(params(i % 2 ? "Work" : "Corvanti-Home")), 0u);
    settle();
    ASSERT_EQ(told_.back().state, kConnected);
    ASSERT_EQ(line_.hangUp(handle_), 0u);
    told_.clear();
  }
}

}  // namespace
}  // namespace pelvaro::line
