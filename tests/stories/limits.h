// What the stories about limits share: connecting, counters that move, the dialog, and a user who answers questions.
#pragma once

#include "story.h"

namespace pelvaro {

using Texts = std::vector<std::string>;

constexpr const char* kNear = "You are about to reach limit, disconnect now?";
constexpr const char* kTimePassed = "Timeout, reconnect?";
constexpr const char* kSizePassed = "You have reached size limit. Reconnect?";
constexpr const char* kInvalid = "Invalid Input. Please enter again.";

struct Limits : Story {
  void SetUp() override {
    Story::SetUp();
    // A person takes a moment to answer, and the program goes on meanwhile.
    world.dialogs.onMessage = [this](const std::string& text) {
      asked.push_back(text);
      wait(500);
      return answer;
    };
  }
  Form1& main() { return windows->form1; }
  Form6& dialog() { return windows->form6; }
  void connect() {
    dial("Work");
    ASSERT_TRUE(waitForStatus(kUp));
  }
  void ticks(int count) { wait(1000 * count); }
  // So many kilobytes more have been received by the next tick, which then comes.
  void receive(std::uint32_t kb) {
    received += kb;
    world.interfaces.count(received, 0);
    ticks(1);
  }
  void open() {
    user([this] { main().Image3.click(); });
  }
  void accept() {
    user([this] { dialog().Command1.click(); });
  }
  void limitTime(const std::string& minutes) {
    open();
    dialog().Text1.setText(minutes);
    accept();
  }
  void limitSize(const std::string& kb) {
    open();
    user([this] { dialog().Option2.click(); });
    dialog().Text2.setText(kb);
    accept();
  }

  Texts asked;
  int answer = kAnswerNo;
  std::uint32_t received = 0;
};

}  // namespace pelvaro
