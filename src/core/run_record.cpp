#include "core/run_record.h"

namespace gorbex {

RunRecord::RunRecord(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) Add(path);
}

void RunRecord::Add(const std::string& path) {
  if (numbers_.emplace(path, projects_.size()).second) projects_.push_back({path});
}

void RunRecord::On(const RunEvent& event) {
  if (const auto* started = std::get_if<ProjectStarted>(&event)) Take(*started);
  if (const auto* compiled = std::get_if<ProjectCompiled>(&event)) Take(*compiled);
  if (const auto* skipped = std::get_if<ProjectSkipped>(&event)) {
    if (Project* project = Find(skipped->path)) project->log = ReasonOf(*skipped);
  }
  if (const auto* fresh = std::get_if<ProjectUpToDate>(&event)) Take(*fresh);
  if (const auto* outdated = std::get_if<ProjectOutdated>(&event)) Take(*outdated);
  if (const auto* latest = std::get_if<LatestGot>(&event)) Take(*latest);
  if (std::holds_alternative<RunPaced>(event)) isSideBySide_ = true;
  if (const auto* question = std::get_if<QuestionAnswered>(&event)) {
    messages_.push_back(question->message.text);
  }
  if (const auto* done = std::get_if<RunDone>(&event)) Take(done->end);
  if (const auto* ended = std::get_if<RunEnded>(&event)) Take(*ended);
}

RunRecord::Project* RunRecord::Find(const std::string& path) {
  const auto number = numbers_.find(path);
  return number == numbers_.end() ? nullptr : &projects_[number->second];
}

void RunRecord::Take(const RunEnded& end) {
  end_ = end;
  hasEnded_ = true;
}

void RunRecord::Take(const ProjectStarted& started) {
  Project* project = Find(started.path);
  if (project == nullptr) return;
  project->place = started.place;
  project->start = started.start;
}

void RunRecord::Take(const ProjectOutdated& outdated) {
  if (Project* project = Find(outdated.path)) project->reason = outdated.reasons;
}

void RunRecord::Take(const ProjectUpToDate& fresh) {
  Project* project = Find(fresh.path);
  if (project == nullptr) return;
  project->outcome = Outcome::UpToDate;
  project->log = "up to date";
  if (!fresh.since.empty()) project->reason = "up to date since " + fresh.since;
}

void RunRecord::Take(const LatestGot& latest) {
  Project* project = Find(latest.path);
  if (project == nullptr || latest.result.kind == LatestResult::Kind::NotControlled) return;
  project->got = latest.result.Succeeded();
  project->notGot = latest.result.problem;
}

void RunRecord::Take(const ProjectCompiled& compiled) {
  Project* project = Find(compiled.path);
  if (project == nullptr) return;
  project->outcome = compiled.succeeded ? Outcome::Built : Outcome::Failed;
  project->duration = compiled.duration;
  project->failure = compiled.failure;
  project->log = compiled.log.empty() ? compiled.problem : compiled.log;
}

}  // namespace gorbex
