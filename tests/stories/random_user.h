// A random user: carries out a plan on the whole program, one step after the other and, while a question is open, a
// modal window is shown or a phone is asked, one step inside the other. After every step what must always hold is
// looked at.
#pragma once

#include <map>
#include <memory>

#include "random_plan.h"
#include "random_world.h"

namespace pelvaro {

// How often what has happened, by name: "step ...", "pressed Form1.Image1", "answered No: ...", "ended ...".
using Tally = std::map<std::string, long>;

struct Lived {
  std::string failure;    // empty when all held; what stands behind a colon differs from case to case
  std::size_t steps = 0;  // of the plan that were taken until then
  long events = 0;        // the steps that found something to do
  Tally tally;
};

// All of them, seen or not.
std::vector<Form*> formsOf(Windows& windows);

class RandomUser {
 public:
  static const Kinds& kinds();

  explicit RandomUser(const Plan& plan) : plan_(plan) {}

  // Called after each step with its kind; a text is a failure.
  std::function<std::string(std::string_view kind)> alsoCheck;

  Lived live();

  // Everything that the user can press, as "Form1.Image1".
  static std::vector<std::string> everythingToPress();

 private:
  struct Deed {
    KindOfStep kind;
    bool (RandomUser::*act)();  // false when there was nothing to do
  };
  struct Inside;
  static const std::vector<Deed>& deeds();

  // A life of the program, and one step of it.
  void begin();
  void finish();
  void take(const Step& step);
  bool over() const { return !lived_.failure.empty() || at_ >= plan_.size(); }

  // What happens inside a step.
  void sendFollowUp();
  bool underWay() const;
  void followUp();
  void unwind();
  void letOthersAct(int milliseconds);
  int answer(const std::string& question);
  std::uint32_t chooseFromMenu();

  // What must always hold. The first failure counts.
  void fail(std::string what);
  void checkAlways();
  void checkAtRest();
  std::string brokenAtRest();

  // Pressing: false when the user cannot reach it.
  void countPress(const Form& form, const Control& control);
  bool reachable(const Form& form) const;
  bool pressAny(Form& form);
  bool press(Form& form, Control& control);
  bool pressList(ListView& list);
  void type(Form& form, Control& box);
  bool hasNoAddress();
  bool acceptLimit();
  Form* anyForm();

  // The deeds: the user's (random_steps.cpp), and those of all others (random_system_steps.cpp).
  bool useMain();
  bool useEditor();
  bool usePicker();
  bool useRecord();
  bool usePrompt();
  bool useSplash();
  bool useLimits();
  bool useStatus();
  bool useDrivers();

  bool signIn();
  bool stayConnected();
  bool hangUp();
  bool cancelOrRetry();
  bool setLimit();
  bool comeNearLimit();
  bool writeEntry();
  bool openMenu();
  bool pressEscape();
  bool pressEnter();
  bool pressF1();
  bool pressAltF4();
  bool activate();
  bool drag();
  bool hover();
  bool minimise();
  bool recolour();

  void mendEverything();
  line::Phone& plug(const std::string& port, const line::PhoneTable& table);
  bool plugIn();
  bool unplug();
  bool occupy();
  bool phoneSpeaks();
  bool networkAnswers();
  bool dialEvent();
  bool lateDialEvent();
  bool strangeMessage();
  bool moveCounters();
  bool failCounters();
  bool failService();
  bool failFiles();
  bool failPrograms();
  bool failSettings();
  bool changeService();
  bool changeSystem();
  bool otherProgram();
  bool runScript();
  bool wait();
  bool waitLong();

  const Plan& plan_;
  std::size_t at_ = 0;
  Lived lived_;
  Dice dice_;
  std::unique_ptr<RandomWorld> world_;
  std::unique_ptr<Windows> windows_;
  std::vector<long> taken_;              // steps by kind
  std::map<std::string, long> pressed_;  // of this life of the program
  int depth_ = 0;                        // steps and questions that are under way
  int boxes_ = 0;                        // questions that are open
  int pause_ = 0;                        // until the next step, in milliseconds
  long connectedRests_ = 0;              // how often nothing was under way while the selected connection was up
  bool byScript_ = false;                // the step comes by message, which reaches what is kept from input
  bool followUpWaits_ = false;
  bool saidNo_ = false;    // to the question near a limit, and no new limit since
  int refusedLimits_ = 0;  // how often a limit was not taken
  line::Scenario scenario_;
};

}  // namespace pelvaro
