// A random user who does anything at any moment, for a great many events, with what must always hold checked after
// each. A failure is cut down to the steps that it needs.
//   PELVARO_RANDOM_EVENTS=n   so many events (100,000), and the counts are printed
//   PELVARO_RANDOM_SEED=n     begins with this number; each makes a plan of its own
//   PELVARO_RANDOM_PLAN=...   plays this plan alone, as a failure has printed it, without a process of its own
#include <cstdio>
#include <cstdlib>

#include "random_child.h"
#include "random_trial.h"

namespace pelvaro {
namespace {

constexpr long kEvents = 100'000;
constexpr std::size_t kStepsOfAPlan = 4'000;

const char* asked(const char* name) {
  const char* value = std::getenv(name);
  return value && *value ? value : nullptr;
}

Plan planFor(std::uint32_t seed) { return planOf(RandomUser::kinds(), seed, kStepsOfAPlan); }

void replay(const char* text) {
  const std::optional<Plan> plan = parsePlan(RandomUser::kinds(), text);
  ASSERT_TRUE(plan) << "PELVARO_RANDOM_PLAN cannot be read";
  EXPECT_EQ(RandomUser(*plan).live().failure, "");
}

TEST(RandomUserStory, NothingBreaksWhateverTheUserDoes) {
  if (const char* text = asked("PELVARO_RANDOM_PLAN")) return replay(text);
  const char* wanted = asked("PELVARO_RANDOM_EVENTS");
  const char* begin = asked("PELVARO_RANDOM_SEED");
  const long events = wanted ? std::atol(wanted) : kEvents;
  long done = 0;
  Tally tally;
  for (auto seed = static_cast<std::uint32_t>(begin ? std::atol(begin) : 1); done < events; ++seed) {
    const Plan plan = planFor(seed);
    const Lived lived = tryPlan(plan);
    done += lived.events;
    for (const auto& [name, count] : lived.tally) tally[name] += count;
    if (!lived.failure.empty()) {
      // Said at once: the shorter plan takes a while, and whoever waits may end it.
      std::printf("PELVARO_RANDOM_SEED=%lu after %ld events: %s\n", static_cast<unsigned long>(seed), done,
                  lived.failure.c_str());
      std::fflush(stdout);
      FAIL() << shrunkReport(plan, lived);
    }
  }
  if (wanted) {
    std::printf("events %ld\n", done);
    for (const auto& [name, count] : tally) std::printf("%10ld %s\n", count, name.c_str());
  }
  if (done < kEvents) return;
  for (const KindOfStep& kind : RandomUser::kinds()) {
    EXPECT_GT(tally[std::string("step ") + kind.name], 0) << kind.name;
  }
  for (const char* question : {"You are about to reach limit", "You have reached size limit", "Timeout", "Restart"}) {
    for (const char* answer : {"answered Yes: ", "answered No: "}) {
      const auto first = tally.lower_bound(std::string(answer) + question);
      EXPECT_TRUE(first != tally.end() && first->first.starts_with(std::string(answer) + question))
          << answer << question;
    }
  }
  for (const std::string& control : RandomUser::everythingToPress()) {
    EXPECT_GT(tally["pressed " + control], 0) << control;
  }
}

TEST(RandomUserStory, APlanIsReadAsItWasWritten) {
  const Kinds& kinds = RandomUser::kinds();
  const Plan plan = planFor(7);
  EXPECT_EQ(parsePlan(kinds, textOf(kinds, plan)), plan);
  EXPECT_EQ(parsePlan(kinds, " "), Plan());
  for (const char* text : {"wait", "wait:", "wait:x", "wait:1x", "nothing:1", "wait:1,2"}) {
    EXPECT_FALSE(parsePlan(kinds, text)) << text;
  }
}

TEST(RandomUserStory, TheSameNumberIsTheSameLife) {
  const Plan plan = planFor(3);
  const Lived one = tryPlan(plan), other = tryPlan(plan);
  EXPECT_EQ(one.events, other.events);
  EXPECT_EQ(one.tally, other.tally);
  EXPECT_EQ(one.failure, "");
}

// Fails, or crashes, once the one kind of step has come behind the other.
AlsoCheck brokenBy(std::string_view first, std::string_view second, bool crash) {
  return [=, firstCame = false](std::string_view kind) mutable -> std::string {
    if (kind == second && firstCame) {
      if (crash) std::abort();
      return "planted: " + std::string(kind);
    }
    firstCame = firstCame || kind == first;
    return {};
  };
}

// A plan in which the one kind comes behind the other.
Plan planWith(std::string_view first, std::string_view second) {
  Plan plan = planOf(RandomUser::kinds(), 5, 300);
  plan[100].kind = kindNamed(RandomUser::kinds(), first);
  plan[250].kind = kindNamed(RandomUser::kinds(), second);
  return plan;
}

std::vector<std::string> names(const Plan& plan) {
  std::vector<std::string> result;
  for (const Step& step : plan) result.emplace_back(RandomUser::kinds()[step.kind].name);
  return result;
}

TEST(RandomUserStory, AFailureIsCutDownToTheTwoStepsThatItNeeds) {
  const MakeCheck check = [] { return brokenBy("minimise", "recolour", false); };
  const Plan plan = planWith("minimise", "recolour");
  const Lived lived = tryPlan(plan, check);
  ASSERT_EQ(lived.failure, "planted: recolour");
  const Plan shortest = shrunkPlan(plan, lived, check);
  EXPECT_EQ(names(shortest), (std::vector<std::string>{"minimise", "recolour"}));
  EXPECT_EQ(tryPlan(shortest, check).failure, lived.failure);
  EXPECT_NE(shrunkReport(shortest, lived, check).find("PELVARO_RANDOM_PLAN='minimise:"), std::string::npos);
}

TEST(RandomUserStory, WithoutTimeAFailureKeepsTheStepsThatItTook) {
  const MakeCheck check = [] { return brokenBy("minimise", "recolour", false); };
  Plan plan = planWith("minimise", "recolour");
  const Lived lived = tryPlan(plan, check);
  ASSERT_EQ(lived.failure, "planted: recolour");
  plan.resize(lived.steps);
  EXPECT_EQ(shrunkPlan(plan, lived, check, std::chrono::milliseconds(0)), plan);
}

TEST(RandomUserStory, ACrashIsCutDownToo) {
  if (!childrenCanCrash()) GTEST_SKIP();
  const MakeCheck check = [] { return brokenBy("recolour", "drag", true); };
  const Plan plan = planWith("recolour", "drag");
  const Lived lived = tryPlan(plan, check);
  ASSERT_TRUE(lived.failure.starts_with("crashed: ")) << lived.failure;
  EXPECT_EQ(names(shrunkPlan(plan, lived, check)), (std::vector<std::string>{"recolour", "drag"}));
}

}  // namespace
}  // namespace pelvaro
