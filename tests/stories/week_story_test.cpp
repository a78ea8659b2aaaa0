// A week online, second by second, with what must always hold checked after each.
#include <cmath>
#include <cstdio>

#include "allocation_count.h"
#include "base/numbers.h"
#include "monitor/limits.h"
#include "story.h"

namespace pelvaro {
namespace {

constexpr int kDay = 86400;
constexpr int kWeek = 7 * kDay;

// What the window must show, worked out from counters that never wrap.
struct Model {
  std::uint64_t receivedOctets = 0, sentOctets = 0;
  std::int32_t receivedKb = 0, sentKb = 0;
  char received[64] = "", sent[64] = "", download[64] = "", upload[64] = "";

  static std::int32_t kilobytes(std::uint64_t octets) {
    return static_cast<std::int32_t>(std::floor(static_cast<double>(octets % 0x100000000) / 1024 + 0.5));
  }
  void second(std::uint32_t in, std::uint32_t out) {
    receivedOctets += in;
    sentOctets += out;
    const std::int32_t receivedBefore = receivedKb, sentBefore = sentKb;
    receivedKb = kilobytes(receivedOctets);
    sentKb = kilobytes(sentOctets);
    std::snprintf(received, sizeof received, "Total bytes received: %d KB", receivedKb);
    std::snprintf(sent, sizeof sent, "Total bytes transmitted: %d KB", sentKb);
    const auto rate = [](char(&text)[64], const char* caption, std::int32_t value) {
      std::snprintf(text, sizeof text, "%s rate: %s KB/sec.", caption, grouped(value, {}).c_str());
    };
    rate(download, "Download", receivedKb - receivedBefore);
    rate(upload, "Upload", static_cast<std::int32_t>(std::round((sentKb - sentBefore) / 1024.0)));
  }
};

TEST_F(Story, AWeekOfSecondsIsCountedRightAskedOnceALimitAndNeedsNoMoreMemory) {
  dial("Work");
  ASSERT_TRUE(waitForStatus(kUp));
  Form1& main = windows->form1;
  int questions = 0;
  world.dialogs.onMessage = [&questions](const std::string&) {
    ++questions;
    return kAnswerNo;
  };
  Model model;
  std::size_t allocated = 0;
  int limits = 0;
  for (int second = 1; second <= kWeek; ++second) {
    if (second % (kDay / 2) == 1) {  // a new limit twice a day, time and size in turn, near from the middle on
      main.settingflag = static_cast<std::int16_t>(limits++ % 2);
      main.requiredtime = second + kDay;
      main.requiredbyte = 5'000'000;
      main.startTime = world.clock.time;
      main.limitAsked = false;
    }
    world.clock.time = second % kDay;
    // Quiet and busy minutes, up to 12 MB a second.
    const std::uint32_t busy = second / 60 % 3 == 0 ? 0 : static_cast<std::uint32_t>(second) * 7919u % 12'000'000u;
    model.second(busy, busy / 5);
    world.interfaces.rows[1] = {6, static_cast<std::uint32_t>(model.receivedOctets),
                                static_cast<std::uint32_t>(model.sentOctets)};
    const int askedBefore = questions;
    const std::size_t before = line::allocationCount();
    user([&main] { main.Timer2.ticked(); });
    // The journal of the questions grows.
    if (second > kDay && questions == askedBefore) allocated += line::allocationCount() - before;

    ASSERT_EQ(main.tickCounter, second);
    ASSERT_EQ(main.Label1.text(), model.received) << second;
    ASSERT_EQ(main.Label2.text(), model.sent) << second;
    ASSERT_EQ(main.Label4.text(), model.download) << second;
    ASSERT_EQ(main.Label5.text(), model.upload) << second;
    if (main.settingflag == monitor::kTimeLimit) {
      const int elapsed = (world.clock.time - main.startTime + kDay) % kDay;
      ASSERT_EQ(main.Label10.text(), durationText(elapsed)) << second;
      if (second > monitor::nearThreshold(main.requiredtime)) {
        ASSERT_EQ(main.Label7.text(), "Time left: " + std::to_string(main.requiredtime - second) + " Second(s)");
      }
    } else {
      ASSERT_EQ(main.Label10.text(), std::to_string(model.receivedKb) + " KB") << second;
    }
    ASSERT_LE(questions, limits) << "once a limit";
  }
  EXPECT_GE(questions, 10) << "both kinds of limit came near";
  EXPECT_EQ(allocated, 0u) << "after the first day the ticks need no more memory";
  EXPECT_EQ(status(), kUp);
  EXPECT_TRUE(world.desktop.reported.empty());
}

}  // namespace
}  // namespace pelvaro
