// Tries a plan of the random user in a process of its own, and finds the shortest plan that fails in the same way.
#pragma once

#include <chrono>

#include "random_user.h"

namespace pelvaro {

// Called after each step with its kind; a text is a failure.
using AlsoCheck = std::function<std::string(std::string_view kind)>;
// A fresh one for every trial, for it may remember steps.
using MakeCheck = std::function<AlsoCheck()>;

// A crash, a report of a sanitizer and a plan that takes too long are failures too.
Lived tryPlan(const Plan& plan, const MakeCheck& makeCheck = nullptr);

// Whether two failures are the same but for what differs from case to case.
bool sameFailure(const std::string& one, const std::string& other);

// How long the shortest plan is looked for; then the shortest so far counts.
constexpr std::chrono::minutes kLongestShrinking{10};

// What to do to see a failure again, with the shortest plan for it.
std::string shrunkReport(Plan plan, const Lived& lived, const MakeCheck& makeCheck = nullptr);
// The shortest plan alone.
Plan shrunkPlan(Plan plan, const Lived& lived, const MakeCheck& makeCheck = nullptr,
                std::chrono::milliseconds longest = kLongestShrinking);

}  // namespace pelvaro
