// Lets single calls of the platform come out otherwise: every call is counted by its verb, and the planned one gets
// another outcome. Used by breaking_services.h.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace pelvaro::fake {

class Faults {
 public:
  struct Plan {
    std::string verb, outcome;
    int call = 0;          // the how manieth of the verb, from 1
    bool forGood = false;  // all later ones too
  };
  struct Verb {
    int calls = 0;
    std::vector<std::string> outcomes;  // that it can have instead of its own
  };

  // Counts a call of a verb with the outcomes that it can have instead of its own. Gives the planned one, mostly none.
  std::string_view at(const char* verb, std::initializer_list<const char*> outcomes) {
    if (lifted_) return {};
    Verb& counted = verbs_[verb];
    if (counted.calls++ == 0) counted.outcomes.assign(outcomes.begin(), outcomes.end());
    if (plan_.call == 0 || plan_.verb != verb) return {};
    if (plan_.forGood ? counted.calls < plan_.call : counted.calls != plan_.call) return {};
    struck_ = true;
    return plan_.outcome;
  }

  void plan(Plan plan) { plan_ = std::move(plan); }
  // From now on nothing fails, and nothing is counted.
  void lift() { lifted_ = true; }
  bool struck() const { return struck_; }
  const std::map<std::string, Verb>& verbs() const { return verbs_; }

 private:
  Plan plan_;
  bool lifted_ = false, struck_ = false;
  std::map<std::string, Verb> verbs_;
};

}  // namespace pelvaro::fake
