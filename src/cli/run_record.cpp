#include "cli/run_record.h"

#include <algorithm>

namespace gorbex::cli {

RunRecord::RunRecord(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) projects_.push_back({path});
}

void RunRecord::On(const RunEvent& event) {
  if (const auto* compiled = std::get_if<ProjectCompiled>(&event)) Take(*compiled);
  if (const auto* question = std::get_if<QuestionAnswered>(&event)) {
    messages_.push_back(question->message.text);
  }
  if (const auto* ended = std::get_if<RunEnded>(&event)) end_ = *ended;
}

void RunRecord::Take(const ProjectCompiled& compiled) {
  const auto project = std::find_if(projects_.begin(), projects_.end(), [&](const Project& each) {
    return each.path == compiled.path;
  });
  if (project == projects_.end()) return;
  project->outcome = compiled.succeeded ? Outcome::Built : Outcome::Failed;
  project->duration = compiled.duration;
  project->log = compiled.log.empty() ? compiled.problem : compiled.log;
}

}  // namespace gorbex::cli
