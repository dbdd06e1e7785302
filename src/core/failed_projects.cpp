#include "core/failed_projects.h"

#include <algorithm>

#include "core/text.h"

namespace gorbex {
std::string FailedProject::Text() const {
  std::string text = path;
  text.append(kLineBreak).append(path.size(), '=').append(kLineBreak);
  const auto start = log.find_first_not_of("\r\n");
  return text.append(start == std::string::npos ? reason : log.substr(start)).append(kLineBreak);
}

FailedProjects::FailedProjects(RunEvents& runs, Signal<CompileEnded>& compiles, Signal<>& closed) {
  subscriptions_.Add(runs, [this](const RunEvent& event) {
    const auto* started = std::get_if<RunStarted>(&event);
    if (started != nullptr && !started->isRepeat) Clear();
    if (const auto* skipped = std::get_if<ProjectSkipped>(&event)) Take(*skipped);
    if (const auto* upToDate = std::get_if<ProjectUpToDate>(&event)) Forget(upToDate->path);
  });
  subscriptions_.Add(compiles, [this](const CompileEnded& compile) { Take(compile); });
  subscriptions_.Add(closed, [this] { Clear(); });
}

const FailedProject* FailedProjects::Find(const std::string& path) const {
  const auto found = std::ranges::find(all_, path, &FailedProject::path);
  return found == all_.end() ? nullptr : &*found;
}

void FailedProjects::Clear() {
  all_.clear();
  changed.Emit();
}

void FailedProjects::Forget(const std::string& path) {
  std::erase_if(all_, [&](const FailedProject& failed) { return failed.path == path; });
  changed.Emit();
}

void FailedProjects::Take(const ProjectSkipped& skipped) {
  Forget(skipped.path);
  all_.push_back({skipped.path, "Not built: " + ReasonOf(skipped), ""});
  changed.Emit();
}

void FailedProjects::Take(const CompileEnded& compile) {
  Forget(compile.path);
  if (!compile.succeeded) {
    const std::string reason = compile.failure ? compile.failure->text : compile.problem;
    all_.push_back({compile.path, reason, compile.log, compile.failure});
  }
  changed.Emit();
}

}  // namespace gorbex
