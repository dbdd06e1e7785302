#include "core/failed_projects.h"

#include <algorithm>

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

std::string ReasonOf(const CompileEnded& compile) {
  if (!compile.problem.empty()) return OnOneLine(compile.problem);
  const auto start = compile.log.find_first_not_of("\r\n\t ");
  if (start == std::string::npos) return "the compiler wrote an empty result log";
  return OnOneLine(compile.log.substr(start, compile.log.find_first_of("\r\n", start) - start));
}

}  // namespace

std::string FailedProject::Text() const {
  std::string text = path;
  text.append(kLineBreak).append(path.size(), '=').append(kLineBreak);
  return text.append(log.empty() ? reason : log).append(kLineBreak);
}

FailedProjects::FailedProjects(RunEvents& runs, Signal<CompileEnded>& compiles)
    : subscriptions_{runs.Connect([this](const RunEvent& event) {
                       if (std::holds_alternative<RunStarted>(event)) Clear();
                       const auto* skipped = std::get_if<ProjectSkipped>(&event);
                       if (skipped != nullptr) Take(*skipped);
                     }),
                     compiles.Connect([this](const CompileEnded& compile) { Take(compile); })} {}

const FailedProject* FailedProjects::Find(const std::string& path) const {
  const auto found = std::find_if(all_.begin(), all_.end(),
                                  [&](const FailedProject& failed) { return failed.path == path; });
  return found == all_.end() ? nullptr : &*found;
}

void FailedProjects::Clear() {
  all_.clear();
  changed.Emit();
}

void FailedProjects::Take(const ProjectSkipped& skipped) {
  all_.push_back({skipped.path, "Not built: " + ReasonOf(skipped), ""});
  changed.Emit();
}

void FailedProjects::Take(const CompileEnded& compile) {
  std::erase_if(all_, [&](const FailedProject& failed) { return failed.path == compile.path; });
  if (!compile.succeeded) all_.push_back({compile.path, ReasonOf(compile), compile.log});
  changed.Emit();
}

}  // namespace gorbex
