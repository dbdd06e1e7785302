#include "build/last_run.h"

#include "build/run_uses.h"
#include "build/terms_in_force.h"

namespace gorbex {

RunTerms TermsOfRun(frmBuilder& window, const clsOptions& options, const Clock& clock) {
  return {window.fileName,     clock.LocalNow(),          TermsLine(TermsInForce(window, options)),
          window.compilerPath, options.VersionComponents, options.Places()};
}

std::vector<std::string> PathsOf(const RunRecord& record) {
  std::vector<std::string> paths;
  paths.reserve(record.Projects().size());
  for (const auto& project : record.Projects()) paths.push_back(project.path);
  return paths;
}

void LastRun::Listen(RunEvents& events) {
  subscriptions_ = {events.Connect([this](const RunEvent& event) { On(event); }),
                    uses_.window.tvwProjects.cleared.Connect([this] { Forget(); })};
}

void LastRun::On(const RunEvent& event) {
  if (const auto* started = std::get_if<RunStarted>(&event)) Begin(*started);
  // Of a run that ended before it had projects, the one before stays the last.
  if (!isHeard_) return;
  if (const auto* project = std::get_if<ProjectStarted>(&event)) {
    record_.Add(project->path);
    begin_ = uses_.clock.Elapsed() - project->start;
  }
  record_.On(event);
  isHeard_ = !std::holds_alternative<RunEnded>(event);
  changed.Emit();
}

void LastRun::Begin(const RunStarted& started) {
  record_ = RunRecord(started.paths);
  terms_ = TermsOfRun(uses_.window, uses_.options, uses_.clock);
  begin_ = uses_.clock.Elapsed();
  hasBegun_ = isHeard_ = true;
  usesInRun_.reset();
  began.Emit();
}

void LastRun::Forget() {
  record_ = RunRecord({});
  hasBegun_ = false;
  began.Emit();
  changed.Emit();
}

const LastRun::Numbers& LastRun::UsesOfRun() {
  if (!usesInRun_) {
    usesInRun_ = UsesInRun(uses_.window.ProjectMembers, uses_.group, PathsOf(record_));
  }
  return *usesInRun_;
}

RunTimeline LastRun::Timeline() {
  const auto length = record_.HasEnded() ? record_.End().duration : uses_.clock.Elapsed() - begin_;
  return TimelineOf(record_, UsesOfRun(), length);
}

}  // namespace gorbex
