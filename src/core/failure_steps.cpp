#include "core/failure_steps.h"

#include <algorithm>
#include <vector>

namespace gorbex {

void FailureSteps::Open(const std::string& project) {
  const FailedProject* failed = failed_.Find(project);
  if (failed == nullptr) return;
  last_ = project;
  opened.Emit(project);
  const FailurePlace place = failed->failure.value_or(FailurePlace{project});
  editor_.Open(place.file, place.line);
}

bool FailureSteps::IsPossible() const {
  return std::ranges::any_of(failed_.All(),
                             [](const auto& each) { return each.failure.has_value(); });
}

void FailureSteps::Step(bool isForward) {
  std::vector<std::string> projects;
  for (const FailedProject& project : failed_.All()) {
    if (project.failure) projects.push_back(project.path);
  }
  if (projects.empty()) return;
  if (!isForward) std::ranges::reverse(projects);
  auto next = std::ranges::find(projects, last_);
  if (next != projects.end()) ++next;
  Open(next == projects.end() ? projects.front() : *next);
}

}  // namespace gorbex
